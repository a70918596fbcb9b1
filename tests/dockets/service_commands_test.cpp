#include "tests/dockets/service_desk.h"

namespace tarvik::test {
namespace {

using ServiceCommands = ServiceDesk;

struct Command {
    Text text, file;
    std::string report;
};
const std::vector<Command> commands{{U"An bendocket", U"z8.xlsx", "3138.txt"},
                                    {U"An dandocket", U"z80.xlsx", "3160.txt"},
                                    {U"An wodben", U"z9.xlsx", "3158.txt"}};

TEST_F(ServiceCommands, text_ahead_of_the_command_makes_no_file_and_harms_no_template)
{
    report = orders = {device(U"Dev-1"), device(U"Dev-2")};
    for (const Command& command : commands) {
        SCOPED_TRACE(to_utf8(command.text));
        lay_out(command.report);
        preset(command.file, template_cells());
        play(U" " + command.text);
        EXPECT_TRUE(office.tasks.back().opened.ends_with(command.file));
        EXPECT_TRUE(saved().empty());
        EXPECT_EQ(lines_of(workbook(installed(program, command.file))), lines_of(template_cells()));
        EXPECT_TRUE(program.run.ahead_of_command);
    }
}

TEST_F(ServiceCommands, an_emptied_or_changed_box_makes_no_sheet)
{
    report = orders = {device(U"Dev-1"), device(U"Dev-2")};
    for (const Command& command : commands) {
        if (command.text == U"An wodben") continue; // no user comes between the key and the sheet
        lay_out(command.report);
        for (const Text box : {U"", U"another text"}) {
            press_enter(command.text);
            started.dialogs.take_messages();
            form1.query_box().set_text(box);
            run();
            EXPECT_EQ(started.dialogs.take_messages().size(), box.empty() ? 2U : 0U);
            EXPECT_TRUE(office.tasks.empty());
            EXPECT_TRUE(form1.window.caption().ends_with(U" ERROR !"));
        }
    }
}

} // namespace
} // namespace tarvik::test

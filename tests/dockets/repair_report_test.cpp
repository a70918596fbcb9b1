#include "dockets/dockets.h"
#include "tests/support/report_desk.h"

namespace tarvik::test {
namespace {

constexpr std::size_t wide = 38;

class RepairReport : public ReportDesk {
protected:
    void SetUp() override { std::filesystem::create_directory(started.installation.path() / "photo"); }

    static Record device(const Text& number)
    {
        Record record = numbered_record(wide);
        record[0] = U"不可修复";
        record[14] = number;
        return record;
    }
    void lay_out(const Report& report)
    {
        write_report("3158.txt", report);
        open_report(report);
    }
};

TEST_F(RepairReport, the_flags_choose_the_template_and_tell_the_cause)
{
    lay_out({device(U"Dev-1")});
    press_enter(U"An dockword");
    for (const auto& [first, second, name] : {std::tuple{true, true, U"wtest1.doc"},
                                              {true, false, U"wtest3.doc"},
                                              {false, false, U"wtest5.doc"},
                                              {false, true, U"wtest2.doc"}}) {
        excecopyword(program, first, second);
        EXPECT_TRUE(office.documents.back().opened.ends_with(name));
        const auto& cells = office.documents.back().cells;
        EXPECT_EQ(cells.size(), first || second ? 12U : 13U);
        if (cells.size() == 13) {
            EXPECT_TRUE(cells.at({6, 1}).ends_with(U"建议报废。\r\n        ：f30"));
        }
    }
}

TEST_F(RepairReport, saving_and_printing_go_by_the_whole_text_of_the_box)
{
    lay_out({device(U"Dev-1")});
    for (const auto& [text, saves, prints] : {std::tuple{U"An dockword", true, 0},
                                              {U"An dockwordp", true, 1},
                                              {U"An dockwordp ", true, 0},
                                              {U"An dockwordpp", true, 0},
                                              {U"x An dockwordp", false, 0}}) {
        play(text);
        EXPECT_EQ(!office.documents.back().saved_as.empty(), saves) << to_utf8(Text(text));
        EXPECT_EQ(office.documents.back().printed, prints) << to_utf8(Text(text));
        EXPECT_EQ(program.run.ahead_of_command, !saves);
        EXPECT_TRUE(office.documents.back().closed && office.documents.back().quit);
        expect_idle();
    }
}

TEST_F(RepairReport, the_picture_bears_the_device_number_in_lower_case)
{
    lay_out({device(U"A/1B"), device(U"..\\photo\\A1B")});
    started.installation.write("photo/a_1b.jpg", "picture");
    started.installation.write("photo/a1b.jpg", "picture");
    play(U"An dockword");
    ASSERT_EQ(office.documents.size(), 2U);
    EXPECT_EQ((office.documents[0].pictures[{9, 1}]), installed(program, U"photo\\a_1b.jpg"));
    EXPECT_TRUE(office.documents[1].pictures.empty()) << "no number leads out of the folder";
}

TEST_F(RepairReport, a_device_that_the_report_no_longer_holds_gets_the_row_that_stands)
{
    lay_out({device(U"Dev-1"), device(U"Dev-2")});
    press_enter(U"An dockword");
    write_report("3158.txt", {device(U"Dev-1")});
    run();
    ASSERT_EQ(office.documents.size(), 2U);
    EXPECT_EQ((office.documents[1].cells[{5, 3}]), U"DEV-1");
    EXPECT_EQ(office.documents[1].saved_as, office.documents[0].saved_as);
}

TEST_F(RepairReport, a_selected_option_stops_the_run_with_a_message)
{
    lay_out({device(U"Dev-1"), device(U"Dev-2")});
    press_enter(U"An dockword");
    started.dialogs.take_messages();
    select_option(form1, form1.Option2);
    run();
    EXPECT_EQ(started.dialogs.take_messages().size(), 1U);
    EXPECT_TRUE(office.documents.empty());
    expect_idle();
}

} // namespace
} // namespace tarvik::test

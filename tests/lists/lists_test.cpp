#include "lists/lists.h"

#include "tests/support/report_desk.h"

#include <random>
#include <utility>

namespace tarvik::test {
namespace {

TEST(CharacterList, has_a_record_for_each_character)
{
    TestProgram desk;
    desk.installation.write("3150.txt", "old");
    desk.open_text(U"a中\r\n𠀀");
    list_characters(desk.program);
    EXPECT_EQ(desk.installation.read("3150.txt"),
              encode(U"a\t*1\r\r\n中\t*2\r\r\n\r\t*3\r\r\n\n\t*4\r\r\n𠀀\t*5\r\r\n"));
    EXPECT_TRUE(TextView(desk.program.notice).contains(U"3150.txt")) << "nothing else shows that it was done";
    desk.open_text(U"");
    list_characters(desk.program);
    EXPECT_EQ(desk.installation.read("3150.txt"), "");
    Text text;
    std::string records;
    for (int number = 1; number <= 200'000; ++number) {
        text += number % 3 == 0 ? U'中' : U'a';
        records += (number % 3 == 0 ? encode(U"中") : "a") + "\t*" + std::to_string(number) + "\r\r\n";
    }
    desk.open_text(text);
    list_characters(desk.program);
    EXPECT_TRUE(desk.installation.read("3150.txt") == records); // megabytes are no message
    EXPECT_TRUE(desk.dialogs.messages.empty());
}

Text value(const Cells& cells, int row, int column)
{
    const auto found = cells.find({row, column});
    if (found == cells.end()) return {};
    if (const auto* number = std::get_if<double>(&found->second)) return number_text(*number);
    return std::get<Text>(found->second);
}

/// A line with a part in field 9 and a model in field 15.
Text line(TextView key, TextView part, TextView model)
{
    return key.str() + U"\t2\t3\t4\t5\t6\t7\t8\t" + part + U"\t10\t11\t12\t13\t14\t" + model + U"\r\n";
}

class Labels : public ReportDesk {
protected:
    Text labels = installed(program, U"z1.xlsx");

    Labels()
    {
        start(program);
        started.installation.write("z1.xlsx", "x");
        started.installation.write(
            "z1z6型号综合统计.txt",
            encode(line(U"z6 1", U"p2", U"m1") + line(U"z6 2", U"p9", U"m3") + line(U"z6 3", U"p2", U"m3")));
        started.open_text(line(U"z1 1", U"p1", U"m1") + line(U"z1 2", U"p2", U"m1") + line(U"z1 3", U"p2", U"m2"));
    }

    void enter_command()
    {
        typed_folder = U"d:\\out";
        press_enter(U"An label", {});
    }
};

TEST_F(Labels, a_cancelled_dialog_quits_the_application_and_goes_on_to_the_saving)
{
    started.dialogs.files = {std::nullopt};
    enter_command();
    EXPECT_TRUE(started.dialogs.messages.empty());
    EXPECT_EQ(office.open_applications, 0);
    EXPECT_TRUE(office.files.contains(U"d:\\out\\2024-03-01-陈默然.xlsx"));
    for (const RecordedTask& task : office.tasks) EXPECT_TRUE(task.quit);
}

TEST_F(Labels, blocks_merge_as_row_by_row_comparison_does)
{
    std::mt19937 random(5);
    const auto part = [&] { return random() % 3 == 0 ? Text() : U"P" + number_text(random() % 4); };
    for (int round = 0; round < 300; ++round) {
        Cells cells;
        const int first_end = 5 + static_cast<int>(random() % 8),
                  second_end = first_end + static_cast<int>(random() % 8);
        for (int row = 5; row < second_end; ++row) {
            cells[{row, 1}] = part();
            cells[{row, 2}] = U"M" + number_text(row);
            if (random() % 2 == 0) cells[{row, 4}] = number_text(row);
            else if (random() % 2 == 0) cells[{row, 4}] = static_cast<double>(row);
        }
        office.files[labels] = cells;
        for (int a = 5; a < first_end; ++a)
            for (int b = first_end; b < second_end; ++b) {
                if (value(cells, a, 1) != value(cells, b, 1)) continue;
                cells[{b, 1}] = cells[{b, 2}] = Text();
                cells[{a, 4}] = std::exchange(cells[{b, 4}], Text());
            }
        form1.z1end = first_end;
        form1.z6end = second_end;
        started.dialogs.files = {labels};
        excel1(program);
        for (Cells* held : {&office.files[labels], &cells})
            std::erase_if(*held, [](const auto& cell) { return cell.second == CellValue(Text()); });
        EXPECT_TRUE(office.files[labels] == cells) << round << ": numbers stay numbers";
    }
}

} // namespace
} // namespace tarvik::test

#include "repair_rules/repair_commands.h"

#include "platform/text/code_page.h"
#include "repair_rules/rules.h"
#include "tests/support/recorded_office.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

/// A folder of sheets on drive d, the report open, and the commands typed.
class RepairCommands : public testing::Test {
protected:
    RecordedOffice office;
    TestProgram desk{&office};
    Form1& form1 = desk.form1();

    // Repair number 7 in column 4, fault, repair, charge in 13, 14 and 16; for the prices 7 in column 2, values from 6.
    RepairCommands()
    {
        desk.open_text(U"head\r\n"
                       U"4900\t7\tc\t007\te\tF6\tG7\th\ti\tj\tk\tl\t电源坏\t换电源\to\t100\r\n"
                       U"200\t7.0\tc\td\te\tF6\tG7\tH8\r\n");
        std::filesystem::create_directory(desk.drive_d.path() / "s");
        for (const char* name : {"b.xlsx", "a.xlsx", "c.xlsx", "m$.xlsx", "z.xlsx"})
            desk.drive_d.write(std::string("s/") + name, name);
        for (const TextView path : {U"d:\\s\\a.xlsx", U"d:\\s\\c.xlsx"})
            office.files[path.str()] = {{{12, 1}, 7.0}, {{12, 2}, U"收发器-48"}};
        office.files[U"d:\\s\\b.xlsx"] = {{{12, 1}, 8.0}, {{12, 2}, U"监控"}};
    }

    void enter(TextView command, std::optional<Text> file = U"d:\\s\\b.xlsx")
    {
        static const ReportCommand rows[] = {order_command, prices_command};
        form1.query_box().set_text(command.str());
        desk.dialogs.inputs = {U"d:\\out"};
        desk.dialogs.files = {std::move(file)};
        EXPECT_TRUE(run_command(desk.program, {{}, rows}));
    }

    std::string caption() const { return to_utf8(desk.program.form1.window.caption()); }
};

TEST_F(RepairCommands, follow_the_rule_table_of_the_installation)
{
    std::string table = to_utf8(repair_rules::built_in_rules());
    const auto change = [&](const std::string& from, const std::string& to) {
        table.replace(table.find(from), from.size(), to);
        desk.installation.write("维修规则.txt", encode(from_utf8(table)));
    };
    change("收费 | 收发器 | -                          | 记录 30 7", "收费|收发器|-|记录 130 7");
    enter(U"An order");
    EXPECT_EQ(office.tasks.at(0).cells.at({12, 10}), CellValue(130.0));

    change("记录 130 7", "记录 130");
    try {
        enter(U"An order");
        ADD_FAILURE() << "the mistake was passed over";
    } catch (const Failure& failure) {
        EXPECT_NE(to_utf8(failure.message()).find("之后须是两个费用：记录 130"), std::string::npos);
    }
    EXPECT_EQ(office.tasks.size(), 3U) << "a sheet was opened";
}

// After an opening that had failed the line rules wrote their charges into all sheets of the folder.
TEST_F(RepairCommands, open_no_sheet_without_records)
{
    desk.open_text(U"");
    for (const TextView command : {U"An order", U"An prices"}) EXPECT_THROW(enter(command), Failure);
    EXPECT_TRUE(office.tasks.empty());
}

TEST_F(RepairCommands, end_at_once_without_a_file)
{
    enter(U"An order", std::nullopt);
    EXPECT_EQ(caption(), "Tarvik 计算 ");
    enter(U"An prices", Text());
    EXPECT_TRUE(office.tasks.empty());
    // A folder whose walk ends with its first file has nothing to do.
    desk.drive_d.write("s/$.xlsx", "");
    enter(U"An order");
    EXPECT_EQ(caption(), "Tarvik 计算  9:05:07←start:    Complete 9:05:07→：0 秒。→：0 秒/张。 OK !");
}

} // namespace
} // namespace tarvik::test

#include "repair_rules/repair_commands.h"

#include "repair_rules/rules.h"
#include "tests/support/report_desk.h"

namespace tarvik::test {
namespace {

/// A folder of sheets on drive d, and the report open.
class RepairCommands : public ReportDesk {
protected:
    // Repair number 7 in column 4, fault, repair, charge in 13, 14 and 16; for the prices 7 in column 2, values from 6.
    RepairCommands()
    {
        typed_folder = U"d:\\out";
        started.open_text(U"head\r\n"
                          U"4900\t7\tc\t007\te\tF6\tG7\th\ti\tj\tk\tl\t电源坏\t换电源\to\t100\r\n"
                          U"200\t7.0\tc\td\te\tF6\tG7\tH8\r\n");
        std::filesystem::create_directory(started.drive_d.path() / "s");
        for (const char* name : {"b.xlsx", "a.xlsx", "c.xlsx", "m$.xlsx", "z.xlsx"})
            started.drive_d.write(std::string("s/") + name, name);
        for (const TextView path : {U"d:\\s\\a.xlsx", U"d:\\s\\c.xlsx"})
            office.files[path.str()] = {{{12, 1}, 7.0}, {{12, 2}, U"收发器-48"}};
        office.files[U"d:\\s\\b.xlsx"] = {{{12, 1}, 8.0}, {{12, 2}, U"监控"}};
    }

    void enter(TextView command, std::optional<Text> file = U"d:\\s\\b.xlsx")
    {
        started.dialogs.files = {std::move(file)};
        press_enter(command, {});
    }
};

TEST_F(RepairCommands, follow_the_rule_table_of_the_installation)
{
    std::string table = to_utf8(repair_rules::built_in_rules());
    const auto change = [&](const std::string& from, const std::string& to) {
        table.replace(table.find(from), from.size(), to);
        started.installation.write("维修规则.txt", encode(from_utf8(table)));
    };
    change("收费 | 收发器 | -                          | 记录 30 7", "收费|收发器|-|记录 130 7");
    enter(U"An order");
    EXPECT_EQ(office.tasks.at(0).cells.at({12, 10}), CellValue(130.0));

    change("记录 130 7", "记录 130");
    enter(U"An order");
    EXPECT_NE(told().at(0).find(U"之后须是两个费用：记录 130"), Text::npos) << "the mistake was passed over";
    EXPECT_EQ(office.tasks.size(), 3U) << "a sheet was opened";
}

// After an opening that had failed the line rules wrote their charges into all sheets of the folder.
TEST_F(RepairCommands, open_no_sheet_without_records)
{
    started.open_text(U"");
    for (const TextView command : {U"An order", U"An prices"}) enter(command);
    EXPECT_EQ(told().size(), 2U);
    EXPECT_TRUE(office.tasks.empty());
}

TEST_F(RepairCommands, end_at_once_without_a_file_and_tell_the_pace_by_the_files_done)
{
    enter(U"An order", std::nullopt);
    EXPECT_EQ(form1.window.caption(), U"Tarvik 计算 ");
    enter(U"An prices", Text());
    EXPECT_TRUE(office.tasks.empty());
    started.clock.time.minute += 2; // the same operation two minutes after the start of the command
    started.dialogs.files = {U"d:\\s\\b.xlsx"};
    excelbijiaop(program);
    EXPECT_EQ(office.tasks.size(), 3U) << "the walk ends at the marked name";
    EXPECT_TRUE(form1.window.caption().ends_with(U"→：120 秒。→：30 秒/张。 OK !"));
}

} // namespace
} // namespace tarvik::test

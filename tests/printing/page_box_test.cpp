#include "printing/page_box.h"
#include "runs/folder_walk.h"

#include "mainwindow/installation_files.h"
#include "tests/support/recorded_office.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

/// A folder of workbooks on drive d and the page box above it.
class PageBox : public testing::Test {
protected:
    RecordedOffice office;
    TestProgram desk{&office};
    Form1& form1 = desk.form1();

    PageBox()
    {
        desk.installation.write("3139.txt", "report\r\n");
        std::filesystem::create_directory(desk.drive_d.path() / "sheets");
        for (const char* name : {"Bill-AB1.xlsx", "bill-ab2.xlsx", "other.xlsx", "m$1.xlsx", "zz-ab9.xlsx"})
            desk.drive_d.write(std::string("sheets/") + name, name);
    }

    void enter(const Text& text)
    {
        form1.page_box().set_text(text);
        print_by_name(desk.program);
    }

    void lock()
    {
        desk.dialogs.files = {U"d:\\sheets\\other.xlsx"};
        enter(U"ab1");
    }

    bool exists(const std::string& path) const { return std::filesystem::exists(desk.drive_d.path() / path); }
};

TEST_F(PageBox, loses_nothing_when_a_file_fails_or_a_name_is_taken)
{
    lock();
    desk.dialogs.take_messages();
    desk.drive_d.write("fprino/bill-ab2.xlsx", "older");
    office.failing = U"AB1.xlsx";
    enter(U"bill");
    ASSERT_EQ(desk.dialogs.messages.size(), 1U);
    EXPECT_NE(desk.dialogs.messages[0].text.find(U"有1个文件没有处理"), Text::npos);
    EXPECT_TRUE(exists("sheets/Bill-AB1.xlsx"));
    EXPECT_EQ(desk.drive_d.read("fprino/bill-ab2.xlsx"), "older");
    EXPECT_EQ(desk.drive_d.read("fprino/bill-ab2 (2).xlsx"), "bill-ab2.xlsx");
    EXPECT_EQ(form1.xlApp, nullptr);
}

TEST_F(PageBox, puts_one_heading_over_what_failed)
{
    std::vector<Text> failures{U" 请注意：\r\n文件 甲.xlsx 没有打印。", U"乙.xlsx 损坏。"};
    EXPECT_EQ(failures_text(failures),
              U" 请注意：\r\n有2个文件没有处理：\r\n文件 甲.xlsx 没有打印。\r\n乙.xlsx 损坏。");
    failures.assign(10, U"坏");
    EXPECT_TRUE(failures_text(failures).ends_with(U"：\r\n坏\r\n坏\r\n坏\r\n坏\r\n坏\r\n坏\r\n坏\r\n坏\r\n坏\r\n坏"));
    failures.push_back(U"第十一");
    EXPECT_TRUE(failures_text(failures).ends_with(U"坏\r\n……")) << "a box must fit the screen";
}

TEST_F(PageBox, leaves_a_printed_file_in_the_folder_of_printed_files)
{
    std::filesystem::rename(desk.drive_d.path() / "sheets", desk.drive_d.path() / "fprino");
    desk.dialogs.files = {U"D:/FPRINO/other.xlsx"};
    enter(U"lock");
    enter(U"ab1");
    ASSERT_EQ(office.tasks.size(), 1U);
    EXPECT_TRUE(office.tasks[0].printed == 1 && office.tasks[0].saved && office.tasks[0].quit);
    EXPECT_TRUE(exists("fprino/Bill-AB1.xlsx"));
    EXPECT_FALSE(exists("fprino/Bill-AB1 (2).xlsx"));
}

// A report of other line ends was one line for every command from then on.
TEST_F(PageBox, lengthens_the_report_in_its_own_way_and_prints_without_it)
{
    desk.installation.write("3139.txt", "\xe4\xb8\xad\n");
    lock();
    enter(U"zz");
    EXPECT_EQ(desk.installation.read("3139.txt"), "\xe4\xb8\xad\n\nd:\\sheets\n");

    desk.dialogs.take_messages();
    for (int i = 0; i < 2; ++i) {
        desk.faulty.trouble_at(2, [](TextView) { throw Failure(U"没有权限"); }); // read, append
        enter(U"ab1");
    }
    EXPECT_EQ(desk.dialogs.take_messages(), std::vector<std::string>{"Tarvik 计算|没有权限"});
    EXPECT_TRUE(exists("fprino/Bill-AB1.xlsx"));
}

} // namespace
} // namespace tarvik::test

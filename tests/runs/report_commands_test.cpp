#include "runs/report_commands.h"

#include "platform/text/code_page.h"
#include "runs/batch_runner.h"
#include "runs/keyed_scans.h"
#include "tests/support/failure_of.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

constexpr ReportCommand designed{
    .text = U"An design",
    .notice = U"见{folder}\\automation.bin。",
    .question = excel_question,
    .report = U"3159",
    .question_tail = U"。",
    .design = U"automation.bin",
    .count_goes_to = &Form1::rowcount,
    .key_column = design_column,
    .template_file = U"designerA.xlsx",
    .sheets = {.timer = &Form1::Timer7, .sheet = [](Program&) {}},
};
constexpr ReportCommand direct{
    .text = U"An direct",
    .title_first = true,
    .key = U"x",
    .count_goes_to = &Form1::recordcount,
    .run = [](Program& program) { program.form1.filecount += 1; },
};
constexpr ReportCommand reports[] = {designed, direct};
constexpr ImmediateCommand immediate[] = {
    {.text = U"An now", .run = [](Program& program) { program.form1.filecount += 10; }},
    {.text = U"An idle", .run = [](Program& program) { program.form1.filecount += 100; }, .during_runs = false},
};
constexpr CommandTable commands{immediate, reports};

/// "query" as key, key column 2, and all boxes at "-1", in the form in which a design is stored.
std::string design_line(std::string_view key, std::string_view column)
{
    std::string line(key);
    for (int box = 0; box < 100; ++box) line += "*-1";
    return line + "*" + std::string(column) + "\r\n";
}

class Commands : public testing::Test {
protected:
    TestProgram desk;
    Program& program = desk.program;
    Form1& form1 = desk.form1();

    Commands()
    {
        desk.open_text(U"head\r\na\tk1\tx\r\nb\tk2\tx\r\nc\tk1\tx\r\n");
        desk.installation.write("automation.bin", design_line("x", "2"));
        desk.installation.write("designerA.xlsx", "");
    }

    bool enter(TextView command, Answer answer = Answer::OK)
    {
        form1.query_box().set_text(command.str());
        desk.dialogs.inputs = {U"d:\\out"};
        desk.dialogs.replies = {answer};
        return run_command(program, commands);
    }
};

TEST_F(Commands, ask_load_scan_and_start_in_their_order)
{
    EXPECT_TRUE(enter(U"old An design"));
    const std::string folder = to_utf8(desk.files.installation_folder());
    const std::vector<std::string> told{
        "Tarvik 计算|见" + folder + "\\automation.bin。",
        "Tarvik 计算|欢迎使用excel自动化报表，首先请确认是否已经打开源数据报表.txt文件，并将其更名为3159.txt，"
        "并保存在此安装目录下" +
            folder + "。"};
    EXPECT_EQ(desk.dialogs.take_messages(), told);
    EXPECT_EQ(form1.rowcount, 3);
    EXPECT_EQ(form1.keycount, 2);
    EXPECT_EQ(desk.module1().keylist.get(1), TextView(U"k2"));
    EXPECT_TRUE(form1.Timer7.enabled());
    EXPECT_EQ(program.form4.Text3.text(), U"x");
    EXPECT_EQ(program.form4.Text4.text(), U"2\r\n");
    EXPECT_EQ(form1.runtitle, U"Tarvik 计算  9:05:07←start:");

    // A second command is refused ahead of its questions; what leaves the run alone is not.
    EXPECT_TRUE(enter(U"An direct"));
    EXPECT_EQ(desk.dialogs.inputs.size(), 1U);
    EXPECT_TRUE(enter(U"An idle"));
    EXPECT_EQ(desk.dialogs.take_messages().size(), 2U);
    EXPECT_TRUE(enter(U"An now"));
    EXPECT_EQ(form1.filecount, 10);
    form1.outfolder = U"kept";
    EXPECT_FALSE(enter(U"Another word"));
    EXPECT_EQ(form1.outfolder, U"kept");
    stop_run(program);
    EXPECT_FALSE(enter(U"Another word")) << "the letters alone cost the folder question";
    EXPECT_EQ(form1.outfolder, U"d:\\out\\");
    EXPECT_FALSE(enter(U"an direct"));
    EXPECT_TRUE(desk.dialogs.messages.empty());
}

TEST_F(Commands, stop_at_a_missing_design_or_template_with_its_message)
{
    const std::string folder = to_utf8(desk.files.installation_folder());
    std::filesystem::remove(desk.installation.path() / "designerA.xlsx");
    EXPECT_TRUE(enter(U"An design"));
    EXPECT_EQ(desk.dialogs.take_messages().back(),
              "Tarvik 计算|" + folder +
                  "\\designerA.xlsx文件不存在，请先将需要设计的EXCEL 样本文件复制到安装目录下，并更名为designerA.xlsx");
    EXPECT_EQ(form1.keycount, 2) << "the scan and the list were made";
    std::filesystem::remove(desk.installation.path() / "automation.bin");
    EXPECT_TRUE(enter(U"An design"));
    EXPECT_EQ(desk.dialogs.take_messages().back(), "Tarvik 计算|" + folder + "\\automation.bin不存在！请退出。");
    EXPECT_FALSE(run_in_progress(form1));
    desk.installation.write("automation.bin", design_line("x", "列"));
    EXPECT_THROW(enter(U"An design"), Failure);
    EXPECT_FALSE(run_in_progress(form1));
    desk.installation.write("automation.bin", design_line("x", "0"));
    desk.installation.write("designerA.xlsx", "");
    EXPECT_TRUE(enter(U"An design"));
    EXPECT_EQ(form1.keycount, 0) << "column 0 holds nothing";
    EXPECT_TRUE(form1.Timer7.enabled());
    stop_run(program);
    EXPECT_TRUE(enter(U"An design", Answer::Cancel));
    EXPECT_FALSE(run_in_progress(form1));
}

TEST_F(Commands, a_scan_that_went_elsewhere_lists_no_keys_and_refuses_those_of_an_earlier_one)
{
    for (const bool option : {false, true}) {
        desk.module1().keylist.clear(0, 1);
        form1.keycount = form1.sufcount = 0;
        form1.comp = !option;
        if (option) select_option(form1, form1.Option1);
        EXPECT_TRUE(enter(U"An design"));
        EXPECT_EQ(desk.dialogs.take_messages().size(), 2U) << "notice and question alone";
        EXPECT_EQ(form1.keycount, 0);
        EXPECT_TRUE(form1.Timer7.enabled());
        stop_run(program);

        form1.comp = false;
        clear_options(form1);
        enter(U"An design");
        stop_run(program);
        ASSERT_EQ(form1.keycount, 2);
        form1.comp = !option;
        if (option) select_option(form1, form1.Option1);
        EXPECT_THROW(enter(U"An design"), Failure);
        EXPECT_FALSE(run_in_progress(form1));
        desk.dialogs.take_messages();
        clear_options(form1);
    }
}

TEST_F(Commands, never_work_on_rows_of_another_scan)
{
    enter(U"An direct");
    form1.comp = true;
    EXPECT_THROW(enter(U"An direct"), Failure);
    EXPECT_EQ(form1.sugcount, 3) << "the scan itself went to the other table";
    form1.comp = false;
    select_option(form1, form1.Option1);
    EXPECT_THROW(enter(U"An direct"), Failure);
    clear_options(form1);
    EXPECT_EQ(form1.filecount, 1);

    Text many;
    for (int row = 0; row < 300'002; ++row) many += number_text(row) + U"\tx\r\n";
    desk.open_text(many);
    EXPECT_THROW(enter(U"An design"), Failure);
    EXPECT_EQ(form1.keycount, 0);
    EXPECT_FALSE(run_in_progress(form1));
}

TEST_F(Commands, scan_the_pane_as_it_is_for_an_empty_report_and_name_a_missing_one)
{
    form1.query_box().set_text(U"An");
    desk.installation.write("3138.txt", "");
    EXPECT_EQ(query2(program, U"k1", false), 2);
    EXPECT_EQ(desk.dialogs.take_messages(), std::vector<std::string>{"Tarvik 计算|打开文件失败！"});
    EXPECT_EQ(form1.sufcount, 2);
    EXPECT_EQ(form1.answer, 1);
    EXPECT_NE(failure_of([&] { query3(program, U"k1", false); }).find("保留.txt"), std::string::npos);
    EXPECT_EQ(query5(program, U"k1", false), 2);
    EXPECT_EQ(query7(program, U"k1", {}), 2);
    EXPECT_TRUE(desk.dialogs.messages.empty());
}

} // namespace
} // namespace tarvik::test

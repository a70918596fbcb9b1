#include "tests/dockets/service_desk.h"

namespace tarvik::test {
namespace {

using ServiceBill = ServiceDesk;

Text before_blank(const Text& text)
{
    return text.substr(0, text.find(U' '));
}

// The date as the bill shows it.
Text date_shown(Text text)
{
    if (text.find_first_of(U"-./\\") == Text::npos)
        text = text.substr(0, 4) + U"-" + (text.size() > 4 ? text.substr(4, 2) : U"") + U"-" +
               (text.size() > 6 ? text.substr(6) : U"");
    std::erase_if(text, [](char32_t c) { return c == U'.' || c == U'/' || c == U'\\'; });
    return text;
}

// What a bill writes ahead of the look-up; an empty text empties.
void predict_bill(Cells& cells, const PlainTable& suf)
{
    const std::map<Text, Text> codes{{U"交包发", U"B/0"}, {U"批次", U"P/0"}, {U"交物流", U"W/0"}};
    const Text way = suf.at(0, 20), device = upper(suf.at(0, 15));
    cells[{4, 2}] = upper(suf.at(0, 14));
    cells[{2, 5}] = U"*" + device + U"*";
    cells[{5, 2}] = suf.at(0, 5);
    cells[{5, 4}] = suf.at(0, 3);
    cells[{5, 6}] = one_number(suf.at(0, 4));
    cells[{6, 2}] = suf.at(0, 19);
    cells[{6, 4}] = codes.contains(way) ? codes.at(way) : Text();
    cells[{6, 6}] = date_shown(before_blank(suf.at(0, 18)));
    cells[{8, 2}] = suf.at(0, 10);
    cells[{8, 4}] = suf.at(0, 9);
    cells[{9, 6}] = device;
    cells[{13, 2}] = suf.at(0, 16);
    if (!suf.at(0, 30).empty()) cells[{18, 2}] = suf.at(0, 30);
    cells[{23, 2}] = suf.at(0, 32);
    cells[{24, 2}] = suf.at(0, 28);
    cells[{24, 6}] = suf.at(0, 22);
}

TEST_F(ServiceBill, whole_workbooks_of_random_reports)
{
    RandomFields random(53);
    PlainTable suf;
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        office.files.clear();
        preset(U"z8.xlsx", template_cells());
        report.clear();
        orders.clear();
        for (int number = 0; number < 8; ++number) {
            Record record = random.record(wide, 15, device_name(number));
            record[0] = U"自制品" + number_text(number);
            if (record.size() > 20 && random.below(2))
                record[19] = std::array{U"交包发", U"批次", U"交物流"}[random.below(3)];
            report.push_back(record);
            Record order = random.record(wide, 16, device_name(number));
            order[0] = number_text(number);
            orders.push_back(order);
        }
        lay_out("3138.txt");
        play(U"An bendocket");

        std::map<Text, Cells> expected;
        suf.scan(report, U"自制品");
        suf.split();
        for (const Text& key : suf.keys(15)) {
            suf.scan(report, key);
            suf.split();
            Cells cells = template_cells();
            predict_bill(cells, suf);
            const Text customer = suf.at(0, 5), way = suf.at(0, 20);
            suf.scan(orders, suf.at(0, 15));
            suf.split();
            cells[{11, 2}] = upper(suf.at(0, 37));
            cells[{12, 2}] = upper(suf.at(0, 35));
            expected[sheet_file(suf.at(0, 23), U"-" + customer + U"-" + suf.at(0, 15) + U"-" + way)] = cells;
        }
        expect_saved(expected);
        EXPECT_EQ(lines_of(workbook(installed(program, U"z8.xlsx"))), lines_of(template_cells()));
        EXPECT_TRUE(form1.window.caption().ends_with(U" OK !"));
        expect_idle();
    }
}

TEST_F(ServiceBill, a_device_without_an_order_is_reported_and_ends_the_run)
{
    report = {device(U"Dev-1"), device(U"Dev-2"), device(U"Dev-3")};
    orders = {device(U"Dev-1"), device(U"Dev-3")};
    lay_out("3138.txt");
    preset(U"z8.xlsx", template_cells());
    press_enter(U"An bendocket");
    const std::string folder = to_utf8(started.files.installation_folder());
    EXPECT_EQ(
        started.dialogs.take_messages(),
        (std::vector{
            "Tarvik 计算|欢迎使用excel自动化报表，首先请确认是否已经打开源数据报表.txt文件，并将其更名为3138.txt，"
            "并保存在此安装目录下" +
            folder + "在此目录下，还应有包含RAM返修单号的，更名为3137.txt的辅助数据表文件。"}));
    run();
    EXPECT_EQ(started.dialogs.take_messages(),
              (std::vector<std::string>{"Tarvik 计算|3137文件中没有此序列号 :dev-2."}));
    EXPECT_EQ(saved().size(), 1U);
    Cells unfinished = template_cells();
    PlainTable suf;
    suf.scan({report[1]}, U"Dev-2");
    suf.split();
    predict_bill(unfinished, suf);
    EXPECT_EQ(lines_of(workbook(installed(program, U"z8.xlsx"))), lines_of(without_empty(unfinished)))
        << "it is closed with saving";
    EXPECT_EQ(form1.window.caption().find(U"!"), Text::npos);
    expect_idle();

    preset(U"z8.xlsx", template_cells());
    open_report(report);
    play(U"old An bendocket");
    EXPECT_EQ(lines_of(workbook(installed(program, U"z8.xlsx"))), lines_of(template_cells()));
}

TEST_F(ServiceBill, a_date_with_no_blank_is_taken_whole_and_a_delivery_way_counts_as_a_whole)
{
    report = {device(U"Dev-1")};
    orders = {device(U"Dev-1")};
    report[0][17] = U"2020/1/5";
    report[0][19] = U"批次 加急";
    lay_out("3138.txt");
    play(U"An bendocket");
    auto& cells = office.tasks.back().cells;
    EXPECT_EQ((cells[{6, 6}]), CellValue(Text(U"202015")));
    EXPECT_EQ((cells[{6, 4}]), CellValue(Text()));
    EXPECT_EQ((cells[{2, 5}]), CellValue(Text(U"*DEV-1*")));
    EXPECT_EQ(to_utf8(office.tasks.back().saved_as), to_utf8(sheet_file(U"f23", U"-f5-dev-1-批次 加急")));
}

} // namespace
} // namespace tarvik::test

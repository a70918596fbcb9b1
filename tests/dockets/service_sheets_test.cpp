#include "calendar/calendar.h"
#include "tests/support/report_desk.h"

namespace tarvik::test {
namespace {

/// How many fields the records of the service reports have.
constexpr std::size_t wide = 40;

Text device_name(int number)
{
    return U"DeV-" + number_text(100 + number);
}

/// Texts and numbers in places that no command writes, and in some that they do.
Cells template_cells()
{
    Cells cells;
    for (int row = 1; row <= 30; ++row)
        for (const int column : {row % 9 + 1, row % 4 + 3, 12})
            cells[{row, column}] = U"t" + number_text(row * 100 + column);
    cells[{11, 1}] = 5.0;
    cells[{18, 2}] = U"kept where the bill has nothing to say";
    return cells;
}

struct Command {
    Text text, file;
    std::string report;
};
const Command bill{U"An bendocket", U"z8.xlsx", "3138.txt"}, list{U"An dandocket", U"z80.xlsx", "3160.txt"},
    summary{U"An wodben", U"z9.xlsx", "3158.txt"};

/// A report and its orders, on which the service bills, lists and summaries are made.
class ServiceSheets : public ReportDesk {
protected:
    Report report, orders;
    PlainTable suf;

    static Record device(const Text& number)
    {
        Record record = numbered_record(wide);
        record[0] = U"自制品";
        record[14] = number;
        return record;
    }
    void lay_out(const std::string& name)
    {
        write_report(name, report);
        write_report("3137.txt", orders);
        open_report(report);
    }
    /// Plays the command over this template: each key's sheet is what `predict` makes of it, which gives its path too.
    void expect_sheets(const Command& command, const Cells& fixed,
                       const std::function<Text(Cells& cells, std::size_t records)>& predict)
    {
        office.files.clear();
        preset(command.file, fixed);
        lay_out(command.report);
        play(command.text);
        std::map<Text, Cells> expected;
        suf.scan(report, U"自制品");
        suf.split();
        for (const Text& key : suf.keys(15)) {
            const std::size_t records = suf.scan(report, key);
            suf.split();
            Cells cells = fixed;
            const Text path = predict(cells, records);
            expected[path] = cells;
        }
        expect_saved(expected);
        EXPECT_EQ(lines_of(workbook(installed(program, command.file))), lines_of(without_empty(fixed)));
        EXPECT_TRUE(form1.window.caption().ends_with(U" OK !"));
        expect_idle();
    }
};

TEST_F(ServiceSheets, a_bill_names_the_delivery_by_its_code_and_keeps_what_it_has_nothing_for)
{
    const std::pair<Text, Text> codes[] = {
        {U"交包发", U"B/0"}, {U"批次", U"P/0"}, {U"交物流", U"W/0"}, {U"批次 加急", U""}};
    for (const auto& [way, code] : codes) {
        report.push_back(device(U"Dev-" + number_text(report.size())));
        report.back()[19] = way;
        report.back()[17] = U"2024.03.07";
        if (code.empty()) report.back()[29].clear();
    }
    orders = report;
    expect_sheets(bill, template_cells(), [&](Cells& cells, std::size_t) {
        const Text number = suf.at(0, 15), way = suf.at(0, 20), repair = suf.at(0, 30);
        cells = workbook(sheet_file(U"f23", U"-f5-" + number + U"-" + way));
        const auto* const code = std::ranges::find(codes, way, &std::pair<Text, Text>::first);
        cells[{6, 4}] = code->second;
        cells[{6, 6}] = U"20240307";
        cells[{9, 6}] = upper(number);
        cells[{13, 2}] = U"f16";
        cells[{18, 2}] = repair.empty() ? Text(U"kept where the bill has nothing to say") : repair;
        return sheet_file(U"f23", U"-f5-" + number + U"-" + way);
    });
}

TEST_F(ServiceSheets, a_device_without_an_order_is_reported_and_ends_the_run)
{
    report = {device(U"Dev-1"), device(U"Dev-2"), device(U"Dev-3")};
    orders = {device(U"Dev-1"), device(U"Dev-3")};
    lay_out("3138.txt");
    preset(U"z8.xlsx", template_cells());
    press_enter(U"An bendocket");
    started.dialogs.take_messages();
    run();
    EXPECT_EQ(started.dialogs.take_messages(),
              (std::vector<std::string>{"Tarvik 计算|3137文件中没有此序列号 :dev-2."}));
    EXPECT_EQ(saved().size(), 1U);
    EXPECT_EQ((workbook(installed(program, U"z8.xlsx"))[{2, 5}]), CellValue(Text(U"*DEV-2*"))) << "closed with saving";
    EXPECT_EQ(form1.window.caption().find(U"!"), Text::npos);
    expect_idle();
}

void predict_list(Cells& cells, const PlainTable& suf, std::size_t records)
{
    double in_warranty = 0;
    for (int row = 12;
         std::ranges::any_of(std::array{2, 3, 4, 5, 6, 7, 8},
                             [&](int column) {
                                 return cells.contains({row, column}) && cells[{row, column}] != CellValue(Text());
                             });
         ++row)
        for (int column = 2; column <= 8; ++column) cells.erase({row, column});
    for (std::size_t i = 0; i < records; ++i) {
        const int row = 12 + static_cast<int>(i);
        const Text serial = suf.at(i, 16), digits = serial.size() > 6 ? serial.substr(6, 2) : Text();
        const bool warranty = is_number(digits) && *number(digits) > 13;
        in_warranty += warranty;
        const Text finding = suf.at(i, 31).empty() ? suf.at(i, 33) : suf.at(i, 31), part = suf.at(i, 32);
        cells[{row, 2}] = upper(suf.at(i, 11));
        cells[{row, 3}] = upper(serial);
        cells[{row, 4}] = warranty ? Text(U"质保期内") : upper(digits);
        cells[{row, 5}] = part.empty() ? upper(suf.at(i, 30)) : Text(U"器件问题");
        cells[{row, 6}] = upper(finding);
        cells[{row, 7}] = upper(part);
        if (!part.empty()) cells[{row, 8}] = Text(U"1");
    }
    cells[{7, 2}] = suf.at(0, 6);
    cells[{8, 2}] = suf.at(0, 4) + U"     " + suf.at(0, 5);
    cells[{9, 2}] = suf.at(0, 15);
    cells[{10, 2}] = static_cast<double>(records);
    cells[{10, 5}] = in_warranty;
    cells[{10, 7}] = static_cast<double>(records) - in_warranty;
}

TEST_F(ServiceSheets, whole_lists_of_random_reports_over_what_earlier_runs_left)
{
    RandomFields random(54);
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Cells fixed;
        for (int row = 1; row <= 11; ++row) fixed[{row, row % 8 + 1}] = U"head";
        for (std::size_t left = random.below(60), i = 0; i < left; ++i)
            for (int column = 2; column <= 8; ++column)
                if (column == 4 || random.below(3)) fixed[{12 + static_cast<int>(i), column}] = U"old";
        fixed[{12, 1}] = fixed[{13, 9}] = U"beside";
        fixed[{120, 2}] = U"signature";
        report.clear();
        for (int batch = 0; batch < 4; ++batch)
            for (std::size_t count = random.below(round % 3 ? 8 : 80) + 1; count > 0; --count) {
                report.push_back(random.record(wide, 15, device_name(batch)));
                report.back()[0] = U"自制品" + number_text(report.size() - 1);
                if (report.back().size() > 16 && random.below(2))
                    report.back()[15] =
                        Text(U"Abc.d/") + std::array{U"13", U"14", U"9x", U" 8", U"20 ", U"1"}[random.below(6)];
            }
        expect_sheets(list, fixed, [&](Cells& cells, std::size_t records) {
            predict_list(cells, suf, records);
            return sheet_file(suf.at(0, 15), U"-" + suf.at(0, 6) + U"-" + suf.at(0, 16));
        });
    }
}

TEST_F(ServiceSheets, a_summary_has_a_row_for_each_record_and_none_of_an_earlier_run)
{
    report = {device(U"Dev-1"), device(U"Dev-2")};
    report[1][3] = U"0755/138";
    Cells fixed{{{1, 1}, U"head"}, {{3, 12}, U"beside"}, {{9, 1}, U"signature"}};
    for (int row = 2; row < 7; ++row) fixed[{row, row}] = U"old";
    preset(summary.file, fixed);
    open_report(report);
    play(summary.text);
    Cells expected{{{1, 1}, U"head"}, {{3, 12}, U"beside"}, {{9, 1}, U"signature"}};
    for (int row = 2; row < 4; ++row) {
        expected[{row, 1}] = row - 1.0;
        for (int column = 2; column <= 8; ++column) expected[{row, column}] = U"F" + number_text(column);
        expected[{row, 5}] = U"F5 F18";
        expected[{row, 7}] = U"F7 F20";
        expected[{row, 9}] = U"F10";
        expected[{row, 10}] = U"F32";
        expected[{row, 11}] = U"DEV-" + number_text(row - 1);
    }
    expected[{3, 4}] = U"138";
    expect_saved({{sheet_file(U"f22", U"_汇总"), expected}});
    EXPECT_EQ(lines_of(workbook(installed(program, summary.file))), lines_of(fixed));
    EXPECT_EQ(form1.window.caption(), U"Tarvik 计算 ");
}

TEST_F(ServiceSheets, text_ahead_of_the_command_makes_no_file_and_harms_no_template)
{
    report = orders = {device(U"Dev-1"), device(U"Dev-2")};
    for (const Command& command : {bill, list, summary}) {
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

TEST_F(ServiceSheets, an_emptied_or_changed_box_makes_no_sheet)
{
    report = orders = {device(U"Dev-1"), device(U"Dev-2")};
    for (const Command& command : {bill, list}) { // no user comes between the key and the summary
        lay_out(command.report);
        for (const Text box : {U"", U"another text"}) {
            press_enter(command.text);
            started.dialogs.take_messages();
            form1.query_box().set_text(box);
            run();
            EXPECT_EQ(started.dialogs.take_messages().size(), box.empty() ? 2U : 0U);
            EXPECT_TRUE(office.tasks.empty());
            EXPECT_TRUE(form1.window.caption().ends_with(U" ERROR !"));
            EXPECT_EQ(program.run.passed.size(), 2U);
        }
    }
}

} // namespace
} // namespace tarvik::test

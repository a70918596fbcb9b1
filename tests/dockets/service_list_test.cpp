#include "tests/dockets/service_desk.h"

namespace tarvik::test {
namespace {

using ServiceList = ServiceDesk;

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

TEST_F(ServiceList, whole_lists_of_random_reports_over_what_earlier_runs_left)
{
    RandomFields random(54);
    PlainTable suf;
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Cells fixed;
        for (int row = 1; row <= 11; ++row) fixed[{row, row % 8 + 1}] = U"head";
        for (std::size_t left = random.below(60), i = 0; i < left; ++i)
            for (int column = 2; column <= 8; ++column)
                if (column == 4 || random.below(3)) fixed[{12 + static_cast<int>(i), column}] = U"old";
        fixed[{12, 1}] = fixed[{13, 9}] = U"beside";
        fixed[{120, 2}] = U"signature";
        office.files.clear();
        preset(U"z80.xlsx", fixed);
        report.clear();
        for (int batch = 0; batch < 4; ++batch)
            for (std::size_t count = random.below(round % 3 ? 8 : 80) + 1; count > 0; --count) {
                Record record = random.record(wide, 15, device_name(batch));
                record[0] = U"自制品" + number_text(report.size());
                if (record.size() > 16 && random.below(2))
                    record[15] =
                        Text(U"Abc.d/") + std::array{U"13", U"14", U"9x", U" 8", U"20 ", U"1"}[random.below(6)];
                report.push_back(record);
            }
        lay_out("3160.txt");
        play(U"An dandocket");

        std::map<Text, Cells> expected;
        suf.scan(report, U"自制品");
        suf.split();
        for (const Text& key : suf.keys(15)) {
            const std::size_t records = suf.scan(report, key);
            suf.split();
            Cells cells = fixed;
            predict_list(cells, suf, records);
            expected[sheet_file(suf.at(0, 15), U"-" + suf.at(0, 6) + U"-" + suf.at(0, 16))] = cells;
        }
        expect_saved(expected);
        EXPECT_EQ(lines_of(workbook(installed(program, U"z80.xlsx"))), lines_of(fixed));
        EXPECT_TRUE(form1.window.caption().ends_with(U" OK !"));
        expect_idle();
    }
}

} // namespace
} // namespace tarvik::test

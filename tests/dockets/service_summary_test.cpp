#include "tests/dockets/service_desk.h"

namespace tarvik::test {
namespace {

using ServiceSummary = ServiceDesk;

TEST_F(ServiceSummary, whole_summaries_of_random_reports)
{
    RandomFields random(55);
    PlainTable suf;
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Cells fixed;
        for (int column = 1; column <= 12; ++column) fixed[{1, column}] = U"head";
        for (std::size_t left = random.below(90), i = 0; i < left; ++i)
            for (int column = 1; column <= 11; ++column)
                if (column == 1 || random.below(3)) fixed[{2 + static_cast<int>(i), column}] = U"old";
        fixed[{3, 12}] = U"beside";
        fixed[{150, 1}] = U"signature";
        office.files.clear();
        preset(U"z9.xlsx", fixed);
        report.clear();
        const std::size_t count = round ? random.below(80) : 0;
        for (std::size_t i = 0; i < count; ++i) {
            report.push_back(random.record(wide, 15, device_name(static_cast<int>(i))));
            report.back()[11] = random.below(5) ? U"自制品" : U"外购";
            report.back()[0] = number_text(i);
        }
        open_report(report);
        play(U"An wodben");

        const std::size_t records = suf.scan(report, U"自制品");
        suf.split();
        Cells cells = fixed;
        std::erase_if(cells, [](const auto& cell) {
            return cell.first.first > 1 && cell.first.first < 120 && cell.first.second < 12;
        });
        for (std::size_t i = 0; i < records; ++i) {
            const int row = 2 + static_cast<int>(i);
            cells[{row, 1}] = static_cast<double>(i + 1);
            for (int j = 2; j <= 8; ++j) cells[{row, j}] = one_number(upper(suf.at(i, static_cast<std::size_t>(j))));
            cells[{row, 5}] = std::get<Text>(cells[{row, 5}]) + U" " + upper(suf.at(i, 18));
            cells[{row, 7}] = std::get<Text>(cells[{row, 7}]) + U" " + upper(suf.at(i, 20));
            cells[{row, 9}] = upper(suf.at(i, 10));
            cells[{row, 10}] = upper(suf.at(i, 32));
            cells[{row, 11}] = upper(suf.at(i, 15));
        }
        ASSERT_EQ(saved().size(), 1U);
        EXPECT_EQ(to_utf8(saved()[0]), to_utf8(sheet_file(suf.at(0, 22), U"_汇总")));
        EXPECT_EQ(lines_of(workbook(saved()[0])), lines_of(without_empty(cells)));
        EXPECT_EQ(lines_of(workbook(installed(program, U"z9.xlsx"))), lines_of(fixed));
        EXPECT_EQ(form1.window.caption(), U"Tarvik 计算 ");
        EXPECT_EQ(form1.recordcount, static_cast<double>(records));
    }
}

} // namespace
} // namespace tarvik::test

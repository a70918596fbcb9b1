#include "designer/design/design.h"
#include "platform/text/code_page.h"
#include "tests/support/packages.h"
#include "tests/support/sheet_desk.h"

namespace tarvik::test {
namespace {

/// Designed reports whose templates hold formulas.
class CalculatedReports : public SheetDesk {
protected:
    using Boxes = std::initializer_list<std::pair<int, const char32_t*>>;

    CalculatedReports()
    {
        for (TextBox* box : form4.design_boxes()) box->set_text(U"-1");
        form4.Text3.set_text(U"班");
        form4.Text4.set_text(U"1");
    }
    /// Lays down the template, the design of these boxes and the marks, and makes the reports.
    void make_reports(const SheetContents& contents, Boxes cells, Boxes elements, const Text& marks)
    {
        set(cells, elements);
        started.installation.write("designerA.xlsx", workbook_of(contents));
        started.installation.write("automation.bin", encode(design_line(program.form4)));
        started.installation.write("3159.txt", encode(marks));
        started.open_text(marks);
        play(U"An testsesame A", U"d:\\out", std::nullopt, {Answer::OK});
        started.dialogs.messages.clear();
    }
    void set(Boxes cells, Boxes elements)
    {
        for (const auto& [index, text] : cells) program.form4.Text1[index].set_text(text);
        for (const auto& [index, text] : elements) program.form4.Text2[index].set_text(text);
    }
};

TEST_F(CalculatedReports, a_key_cell_that_is_a_formula_finds_its_row)
{
    const Text marks = U"s1\t一班\tanna\r\ns2\t一班\tben\r\ns3\t二班\tcarl\r\n";
    make_reports({{{1, 1}, "=B1"}, {{1, 2}, "?"}}, {{0, U"1"}, {1, U"2"}}, {{0, U"0"}, {1, U"1"}}, marks);
    EXPECT_EQ(shown(U"d:\\out\\S2.xlsx", 1, 1), "S2");
    set({{1, U"1"}, {2, U"5"}, {3, U"4"}}, {{3, U"3"}});
    play(U"An Excelfile", U"d:\\filled", U"d:\\out\\S1.xlsx");
    EXPECT_EQ(started.dialogs.messages.size(), 1U) << "one says what the command does; no key is missed";
    EXPECT_EQ(shown(U"d:\\filled\\AS2.xlsx", 5, 4), "BEN");
    EXPECT_EQ(shown(U"d:\\filled\\AS3.xlsx", 5, 4), "CARL");
}

TEST_F(CalculatedReports, an_average_at_the_foot_stands_in_the_file)
{
    make_reports({{{10, 3}, "=AVERAGE(C3:C9)"}, {{11, 3}, "=COUNTA(A3:A9)"}}, {{28, U"3"}, {29, U"1"}, {30, U"3"}},
                 {{29, U"3"}, {30, U"4"}}, U"s1\t班\tmath\t90\r\ns1\t班\tart\t70.5\r\ns1\t班\tmusic\t007\r\n");
    const auto sheet = part_of(started.drive_d.read("out/S1.xlsx"), "xl/worksheets/sheet1.xml");
    for (const char* result : {"<f>AVERAGE(C3:C9)</f><v>80.25</v>", "<f>COUNTA(A3:A9)</f><v>3</v>"})
        EXPECT_NE(sheet.find(result), std::string::npos) << result << " is not in " << sheet;
    EXPECT_EQ(shown(U"d:\\out\\S1.xlsx", 5, 3), "007");
}

} // namespace
} // namespace tarvik::test

#include "designer/design/design.h"
#include "mainwindow/installation_files.h"
#include "platform/text/code_page.h"
#include "tests/support/packages.h"
#include "tests/support/sheet_desk.h"

/// Templates and sheets that hold formulas, under every family of commands.
namespace tarvik::test {
namespace {

class CalculatedDesk : public SheetDesk {
protected:
    /// The texts of a column, each with a "|" behind it.
    std::string texts(TextView path, int first, int last, int column)
    {
        std::string all;
        for (int row = first; row <= last; ++row) all += shown(path, row, column) + "|";
        return all;
    }
};

class CalculatedDockets : public CalculatedDesk {
protected:
    /// The same report wherever a command looks for one: its fields are "f1", "f2", ... but for some.
    void lay_report(const std::vector<std::map<int, Text>>& records)
    {
        Text text = U"head\r\n";
        for (const auto& record : records)
            for (int field = 1; field <= 40; ++field)
                text += (record.contains(field) ? record.at(field) : U"f" + number_text(field)) +
                        (field < 40 ? U"\t" : U"\r\n");
        for (const char* name : {"3138.txt", "3139.txt", "3160.txt"}) started.installation.write(name, encode(text));
        started.open_text(text);
    }
    /// The only workbook below the folder.
    Text only_file(const char* folder)
    {
        Text path;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(started.drive_d.path() / folder))
            if (entry.is_regular_file()) {
                EXPECT_TRUE(path.empty());
                path = U"d:\\" + from_utf8(std::filesystem::relative(entry.path(), started.drive_d.path()).string());
            }
        return path;
    }
};

const SheetContents numbered{{{12, 3}, "=IF(A12=\"\",\"\",\"SN\"&A12)"},
                             {{13, 3}, "=IF(A13=\"\",\"\",\"SN\"&A13)"},
                             {{14, 3}, "=IF(A14=\"\",\"\",\"SN\"&A14)"},
                             {{14, 1}, "left"}};

TEST_F(CalculatedDockets, a_blanked_template_keeps_its_formulas)
{
    for (const char* name : {"z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx"})
        started.installation.write(name, workbook_of(numbered));
    Text design = U"4900";
    for (int box = 0; box < 100; ++box)
        design += U"*" + Text(box == 28 ? U"12" : box == 29 ? U"1" : box == 79 ? U"5" : U"-1");
    started.installation.write("automation.bin", encode(design + U"*3\r\n"));
    lay_report({{{1, U"1"}, {3, U"4900000001"}, {5, U"a"}}, {{1, U"2"}, {3, U"4900000001"}, {5, U"b"}}});
    play(U"An testdocket", U"d:\\out", std::nullopt, {Answer::OK});
    EXPECT_EQ(texts(only_file("out"), 12, 14, 3), "SNa|SNb||");
    started.drive_d.write("template.xlsx", started.installation.read("z5.xlsx"));
    EXPECT_EQ(texts(U"d:\\template.xlsx", 12, 14, 1), "|||");
}

TEST_F(CalculatedDockets, a_row_of_empty_results_is_not_left_from_an_earlier_list)
{
    started.installation.write("z80.xlsx", workbook_of({{{12, 8}, "=IF(B12=\"\",\"\",\"无\")"},
                                                        {{13, 8}, "=IF(B13=\"\",\"\",\"无\")"},
                                                        {{14, 8}, "=IF(B14=\"\",\"\",\"无\")"},
                                                        {{12, 2}, "left"}}));
    lay_report({{{1, U"自制品1"}, {15, U"dev"}, {32, U""}}, {{1, U"自制品2"}, {15, U"dev"}, {32, U""}}});
    play(U"An dandocket", U"d:\\out", std::nullopt, {Answer::OK});
    EXPECT_EQ(texts(only_file("out"), 12, 14, 8), "无|无||");
}

/// Designed reports whose templates hold formulas.
class CalculatedReports : public CalculatedDesk {
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

/// Sheets of the department with formulas in their lines, and the records of devices 7 and 8.
class CalculatedSheets : public CalculatedDesk {
protected:
    CalculatedSheets()
    {
        started.open_text(U"head\r\n"
                          U"4900\t2\t3\t007\t5\t6\t7\t8\t9\t10\t11\t12\t电源坏\t换电源\t15\t1\r\n"
                          U"200\t7\t3\t4\t5\t坏一\t修一\tP7\tQ\t1\t2\t3\t4\r\n"
                          U"200\t7\t3\t4\t5\t坏二\t修二\tP7\tQ\t1\t2\t3\t5\r\n"
                          U"200\t8\t3\t4\t5\t坏三\t修三\tP8\tQ\t1\t2\t3\t6\r\n");
        std::filesystem::create_directory(started.drive_d.path() / "s");
    }
    void lay(const SheetContents& contents) { started.drive_d.write("s/a.xlsx", workbook_of(contents)); }
    /// Columns 5 to 12.
    std::string line(TextView path, int row)
    {
        std::string text;
        for (int column = 5; column <= 12; ++column) text += shown(path, row, column) + (column < 12 ? "·" : "");
        return text;
    }
};

TEST_F(CalculatedSheets, lines_pushed_down_keep_the_texts_that_formulas_gave)
{
    lay({{{12, 1}, "7"}, {{12, 3}, "=\"SN\"&A12"}, {{13, 1}, "8"}, {{13, 3}, "=\"SN\"&A13"}});
    play(U"An order", U"d:\\orders", U"d:\\s\\a.xlsx");
    play(U"An prices", U"d:\\prices", U"d:\\orders\\Aa.xlsx");
    EXPECT_EQ(texts(U"d:\\prices\\AAa.xlsx", 12, 15, 3), "SN7|||SN8|");
    EXPECT_EQ(line(U"d:\\prices\\AAa.xlsx", 15), "坏三·修三·p8·q·1·2·3·6");
}

TEST_F(CalculatedSheets, a_formula_with_an_empty_result_leaves_its_line_free)
{
    const SheetContents contents{{{12, 1}, "7"},
                                 {{12, 2}, "收发器-48"},
                                 {{12, 5}, "=\"\""},
                                 {{12, 6}, "=IF(A12=\"\",1,\"\")"},
                                 {{12, 7}, "old"}};
    lay(contents);
    play(U"An order", U"d:\\orders", U"d:\\s\\a.xlsx");
    EXPECT_EQ(line(U"d:\\orders\\Aa.xlsx", 12), "|电源坏·|换电源·|30003418·1·1·30·7·53.35");
    play(U"An prices", U"d:\\prices", U"d:\\s\\a.xlsx");
    EXPECT_EQ(line(U"d:\\prices\\Aa.xlsx", 12), "坏一·修一·p7·q·1·2·3·4");
    EXPECT_EQ(line(U"d:\\prices\\Aa.xlsx", 13), "坏二·修二······");
}

using CalculatedList = CalculatedDesk;

} // namespace
} // namespace tarvik::test

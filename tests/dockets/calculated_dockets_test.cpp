#include "platform/text/code_page.h"
#include "tests/support/sheet_desk.h"

namespace tarvik::test {
namespace {

class CalculatedDockets : public SheetDesk {
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
    std::string texts(TextView path, int first, int last, int column)
    {
        std::string all;
        for (int row = first; row <= last; ++row) all += shown(path, row, column) + "|";
        return all;
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

} // namespace
} // namespace tarvik::test

#include "tests/support/sheet_desk.h"

namespace tarvik::test {
namespace {

/// Sheets of the department with formulas in their lines, and the records of devices 7 and 8.
class CalculatedSheets : public SheetDesk {
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

TEST_F(CalculatedSheets, an_order_again_meets_the_numbers_and_charges_that_formulas_give)
{
    lay({{{12, 1}, "=3+4"}, {{12, 2}, "监控"}, {{12, 9}, "=20+30"}});
    play(U"An order", U"d:\\once", U"d:\\s\\a.xlsx");
    EXPECT_EQ(line(U"d:\\once\\Aa.xlsx", 12), "|电源坏·|换电源·|·0·50·50·10·154.44");
    play(U"An order", U"d:\\twice", U"d:\\once\\Aa.xlsx");
    EXPECT_EQ(line(U"d:\\twice\\AAa.xlsx", 12), "|电源坏|电源坏·|换电源|换电源·|·0·50·50·10·154.44");
    EXPECT_TRUE(started.dialogs.messages.empty());
}

TEST_F(CalculatedSheets, lines_pushed_down_keep_the_texts_that_formulas_gave)
{
    lay({{{12, 1}, "7"}, {{12, 3}, "=\"SN\"&A12"}, {{13, 1}, "8"}, {{13, 3}, "=\"SN\"&A13"}});
    play(U"An order", U"d:\\orders", U"d:\\s\\a.xlsx");
    play(U"An prices", U"d:\\prices", U"d:\\orders\\Aa.xlsx");
    std::string numbers;
    for (int row = 12; row <= 15; ++row) numbers += shown(U"d:\\prices\\AAa.xlsx", row, 3) + "|";
    EXPECT_EQ(numbers, "SN7|||SN8|");
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

} // namespace
} // namespace tarvik::test

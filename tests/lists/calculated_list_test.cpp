#include "mainwindow/installation_files.h"
#include "platform/text/code_page.h"
#include "tests/support/sheet_desk.h"

namespace tarvik::test {
namespace {

using CalculatedList = SheetDesk;

TEST_F(CalculatedList, blanking_leaves_the_formulas_whose_results_go_with_the_texts)
{
    started.installation.write("z1.xlsx", workbook_of({{{5, 5}, "=IF(A5=\"\",\"\",\"#\"&A5)"},
                                                       {{6, 5}, "=IF(A6=\"\",\"\",\"#\"&A6)"},
                                                       {{7, 5}, "=IF(A7=\"\",\"\",\"#\"&A7)"},
                                                       {{7, 6}, "=1+1"}}));
    const auto line = [](TextView key, const Text& part) {
        return key.str() + U"\t2\t3\t4\t5\t6\t7\t8\t" + part + U"\t10\t11\t12\t13\t14\tm" + part + U"\r\n";
    };
    started.installation.write("z1z6型号综合统计.txt", encode(line(U"z6", U"p9")));
    for (const auto& [folder, parts] :
         {std::pair<Text, std::vector<Text>>{U"d:\\one", {U"p1", U"p2", U"p3"}}, {U"d:\\two", {U"p4", U"p5"}}}) {
        Text lines;
        for (const Text& part : parts) lines += line(U"z1", part);
        started.open_text(lines);
        play(U"An label", folder, installed(program, files::label_list));
    }
    const auto column = [&](const Text& folder) {
        std::string texts;
        for (int row = 5; row <= 7; ++row) texts += shown(folder + U"\\2024-03-01-陈默然.xlsx", row, 5) + "|";
        return texts + shown(folder + U"\\2024-03-01-陈默然.xlsx", 7, 6);
    };
    EXPECT_EQ(column(U"d:\\one"), "#P1|#P2|#P3|");
    EXPECT_EQ(column(U"d:\\two"), "#P4|#P5|#P9|") << "the first list stood in the template";
}

} // namespace
} // namespace tarvik::test

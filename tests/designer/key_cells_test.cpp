#include "tests/designer/designed_run.h"

#include <random>

namespace tarvik::test {
namespace {

class KeyCellsRun : public DesignedRun {
protected:
    void start_run(const Text& lines)
    {
        started.open_text(lines);
        started.dialogs.files = {U"d:\\src\\any.xlsx"};
        command(U"An Excelfile");
    }
};

TEST_F(KeyCellsRun, cancel_ends_it_and_boxes_without_a_number_match_nothing)
{
    source_file("one.xlsx", {{{1, 1}, U"s1"}});
    start_run(U"s1\t班\r\n");
    started.dialogs.files.clear();
    (void)told();
    tick(form1.Timer9);
    expect_released();
    EXPECT_TRUE(told().empty());
    EXPECT_TRUE(office.tasks.empty());

    for (const Text& no_number : {Text(), Text(U"a"), Text(U"0")}) {
        boxes(form4.Text1, {{0, no_number}, {1, U"1"}});
        boxes(form4.Text2, {{1, U"1"}});
        start_run(U"s1\t班\r\n");
        (void)told();
        run();
        EXPECT_EQ(told(), std::vector<Text>{U"填词完毕，还差1请收好，再见！"});
    }
}

TEST_F(KeyCellsRun, a_file_that_fails_is_reported_and_its_matches_do_not_count)
{
    boxes(form4.Text1, {{0, U"-1"}, {1, U"1"}, {2, U"3"}, {3, U"3"}});
    boxes(form4.Text2, {{1, U"1"}, {3, U"3"}});
    source_file("1.xlsx", {{{1, 1}, U"s1"}});
    source_file("2.xlsx", {{{1, 1}, U"s2"}});
    office.failing = U"1.xlsx";
    start_run(U"s1\t班\tanna\r\ns2\t班\tben\r\n");
    (void)told();
    run();
    expect_released();
    const auto messages = told();
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_NE(messages[0].find(U"有1个文件没有处理"), Text::npos);
    EXPECT_EQ(messages[1], U"填词完毕，还差1请收好，再见！");
    EXPECT_EQ(held(U"d:\\out\\A2.xlsx"), "1,1=s2 3,3=BEN ");
}

// The same pass, cell by cell.
struct Plain {
    Cells cells;
    int matches = 0;

    Text at(int row, int column) const
    {
        const auto found = cells.find({row, column});
        return found == cells.end() ? Text() : std::get<Text>(found->second);
    }
    void fill(const Form4& form4, const std::vector<std::vector<Text>>& suf)
    {
        const auto number_in = [](const TextBox& box) { return static_cast<int>(leading_number(box.text())); };
        const int column = number_in(form4.Text1[1]);
        int last = 1;
        for (int r = 1; r <= number_in(form4.Text4); ++r)
            if (!at(r, column).empty()) last = r;
        for (int t = 1; t <= last; ++t)
            for (const auto& row : suf) {
                const auto field = [&](int box) {
                    return row[static_cast<std::size_t>(number_in(form4.Text2[box]) - 1)];
                };
                const int key_row = number_in(form4.Text1[0]) < 0 ? t : number_in(form4.Text1[0]);
                const Text key = at(key_row, column);
                if (field(1).empty() || key.empty() || upper(field(1)) != upper(key)) continue;
                ++matches;
                for (int i = 2; i <= 26; i += 2) {
                    if (number_in(form4.Text1[i + 1]) < 1 || number_in(form4.Text2[i + 1]) < 0) continue;
                    const int target = number_in(form4.Text1[i]) < 0 ? t : number_in(form4.Text1[i]);
                    if (!field(i + 1).empty()) cells[{target, number_in(form4.Text1[i + 1])}] = upper(field(i + 1));
                }
            }
    }
};

TEST_F(KeyCellsRun, finds_what_plain_loops_find_also_where_key_cells_are_overwritten)
{
    std::mt19937 random(11);
    const auto upto = [&random](unsigned n) { return static_cast<int>(random() % n); };
    const auto word = [&] { return Text(1, static_cast<char32_t>(U'a' + upto(4))) + (upto(2) ? U"" : U"x"); };
    for (int round = 0; round < 150; ++round) {
        form4.Text4.set_text(number_text(upto(12)));
        boxes(form4.Text1, {{0, number_text(upto(3) ? -1 : 1 + upto(3))}, {1, number_text(1 + upto(3))}});
        form4.Text2[1].set_text(number_text(1 + upto(3)));
        for (int i = 2; i <= 8; i += 2) {
            form4.Text1[i].set_text(number_text(upto(2) ? -1 : 1 + upto(8)));
            form4.Text1[i + 1].set_text(number_text(upto(4)));
            form4.Text2[i + 1].set_text(number_text(1 + upto(3)));
        }
        Text lines;
        std::vector<std::vector<Text>> suf;
        const int rows = 1 + upto(8);
        for (int row = 0; row < rows; ++row) { // the last field keeps every line apart
            suf.push_back({word(), upto(4) ? word() : Text(), word(), U"班" + number_text(row)});
            lines += suf.back()[0] + U"\t" + suf.back()[1] + U"\t" + suf.back()[2] + U"\t" + suf.back()[3] + U"\r\n";
        }
        Plain plain;
        for (int cell = upto(16); cell > 0; --cell) plain.cells[{1 + upto(9), 1 + upto(3)}] = word();
        source_file("any.xlsx", plain.cells);
        plain.fill(form4, suf);
        form1.folderchosen = false;
        start_run(lines);
        run();
        office.files[U"plain"] = plain.cells;
        ASSERT_EQ(held(U"d:\\out\\Aany.xlsx"), held(U"plain")) << round;
        ASSERT_EQ(form1.sheetno, plain.matches) << round;
    }
}

} // namespace
} // namespace tarvik::test

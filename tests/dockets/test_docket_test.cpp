#include "dockets/dockets.h"
#include "tests/support/report_desk.h"

namespace tarvik::test {
namespace {

constexpr std::size_t wide = 30;

class TestDocket : public ReportDesk {
protected:
    std::vector<Text> boxes1 = std::vector<Text>(50, U"-1"), boxes2 = boxes1;
    Text query = U"4900", key_column = U"3";

    void write_design()
    {
        Text line = query;
        for (const auto* boxes : {&boxes1, &boxes2})
            for (const Text& box : *boxes) line += U"*" + box;
        started.installation.write("automation.bin", encode(line + U"*" + key_column + U"\r\n"));
    }

    void SetUp() override
    {
        for (const char* name : {"z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx"}) started.installation.write(name, "x");
    }

    static Record record(const Text& receipt, int number)
    {
        Record fields = numbered_record(wide);
        fields[0] = number_text(number);
        fields[2] = receipt;
        return fields;
    }
    static Report records(const Text& receipt, int count)
    {
        Report report;
        for (int i = 0; i < count; ++i) report.push_back(record(receipt, i));
        return report;
    }
};

// The number of a box that takes part in the design.
std::optional<int> used(const Text& box)
{
    const auto value = number(box);
    return value && *value >= 0 && *value == static_cast<int>(*value) ? std::optional(static_cast<int>(*value))
                                                                      : std::nullopt;
}

// What a docket writes into its template.
Cells predicted(const PlainTable& suf, const std::vector<Text>& to, const std::vector<Text>& from, std::size_t records,
                std::size_t all)
{
    Cells cells;
    const auto write = [&](int row, int column, const Text& text) {
        if (row > 0 && column > 0 && !text.empty()) cells[{row, column}] = text;
    };
    if (const auto first = to[28].empty() ? 0 : used(to[28]))
        for (std::size_t i = 0; i < records; ++i)
            for (std::size_t k = 29; k < 50; ++k)
                if (const auto column = used(to[k]), source = used(from[k]); column && source)
                    write(*first + static_cast<int>(i), *column, suf.at(i, static_cast<std::size_t>(*source)));
    for (std::size_t k = 0; k < 28; k += 2)
        if (used(to[k]) && used(to[k + 1]) && used(from[k]) && used(from[k + 1]))
            write(*used(to[k]), *used(to[k + 1]),
                  suf.at(static_cast<std::size_t>(*used(from[k])), static_cast<std::size_t>(*used(from[k + 1]))));
    cells[{10, 2}] = static_cast<double>(all);
    cells[{10, 5}] = static_cast<double>(all) - static_cast<double>(records);
    cells[{10, 7}] = static_cast<double>(records);
    cells[{8, 2}] = suf.at(0, 19) + U"     " + suf.at(0, 20);
    return cells;
}

TEST_F(TestDocket, whole_workbooks_of_random_reports_and_designs)
{
    RandomFields random(52);
    const std::vector<Text> numbers{U"-1", U"-1", U"0", U"1", U"2", U"5", U"9", U"12", U" 3 ", U"180", U"1.5", U"x"};
    PlainTable suf; // keeps what a shorter record does not reach, over the runs
    Cells fixed;
    for (int row = 1; row <= 100; ++row) fixed[{row, row % 12 + 1}] = U"fixed" + number_text(row);
    fixed[{1000, 10}] = fixed[{1000, 11}] = fixed[{1001, 10}] = U"at the end of what is emptied";
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        office.files.clear();
        for (auto* boxes : {&boxes1, &boxes2})
            for (Text& box : *boxes) box = numbers[random.below(numbers.size())];
        if (round % 3) boxes1[28] = round % 3 == 1 ? U"12" : U"";
        if (boxes1[28].empty()) boxes1[28] = U"0";
        write_design();
        Report all, part;
        std::vector<std::size_t> received;
        for (int key = 0; key < 4; ++key) {
            const Text receipt = U"49000000" + number_text(10 + key);
            for (std::size_t count = random.below(round % 4 ? 12 : 80) + 1; count > 0; --count) {
                all.push_back(random.record(wide, 3, receipt));
                all.back()[0] = number_text(all.size());
                if (key && random.below(4)) part.push_back(all.back());
            }
        }
        write_report("3139.txt", all);
        write_report("3138.txt", part);
        for (const Text name : {U"z5.xlsx", U"z6.xlsx"}) preset(name, fixed);
        program.blank_templates.clear();
        Cells blank = fixed;
        std::erase_if(blank, [](const auto& cell) {
            return cell.first.first >= 13 && cell.first.first <= 1000 && cell.first.second <= 10;
        });
        open_report(all);
        play(U"An testdocket");

        suf.scan(all, U"4900");
        suf.split();
        std::map<Text, Cells> expected;
        for (const Text& key : suf.keys(3)) {
            const std::size_t every = suf.scan(all, key), outside = suf.scan(part, key);
            if (outside == 0) continue;
            suf.split();
            Cells cells = blank;
            for (const auto& [place, value] : predicted(suf, boxes1, boxes2, outside, every)) cells[place] = value;
            const Text mark = outside > 68 ? U"陈默然" : U"";
            expected[sheet_file(suf.at(0, 24), U"-" + suf.at(0, 16) + mark + U"-" + suf.at(0, 17))] = cells;
        }
        expect_saved(expected);
        for (const Text name : {U"z5.xlsx", U"z6.xlsx"})
            EXPECT_EQ(lines_of(workbook(installed(program, name))), lines_of(blank));
        expect_idle();
    }
}

TEST_F(TestDocket, an_empty_list_row_means_row_0_and_a_negative_one_no_list)
{
    boxes1[29] = U"2";
    boxes2[29] = U"5";
    const Report report = records(U"4900000001", 3);
    write_report("3139.txt", report);
    write_report("3138.txt", report);
    open_report(report);
    for (const auto& [first, rows] : {std::pair{Text(U""), 2U}, {Text(U"-1"), 0U}, {Text(U"1"), 3U}}) {
        boxes1[28] = first.empty() ? U" " : first;
        write_design();
        press_enter(U"An testdocket");
        form1.query_box().set_text(U"An testdocket");
        program.form4.Text1[28].set_text(first);
        run();
        std::size_t written = 0;
        for (const auto& [place, value] : office.tasks.back().cells) written += value == CellValue(Text(U"f5"));
        EXPECT_EQ(written, rows) << to_utf8(first);
    }
}

TEST_F(TestDocket, without_its_command_nothing_is_made)
{
    const Report report = records(U"4900000001", 2);
    write_report("3139.txt", report);
    write_report("3138.txt", report);
    open_report(report);
    write_design();
    press_enter(U"An testdocket");
    form1.query_box().set_text(U"something else");
    run();
    EXPECT_TRUE(saved().empty());
    EXPECT_TRUE(form1.window.caption().ends_with(U" ERROR !"));
    play(U"x An testdocket");
    EXPECT_TRUE(saved().empty());
    EXPECT_FALSE(office.tasks.back().saved);
    EXPECT_TRUE(program.run.ahead_of_command);
    expect_idle();
}

} // namespace
} // namespace tarvik::test

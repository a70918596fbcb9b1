#include "dockets/dockets.h"
#include "tests/support/report_desk.h"

/// The two dockets: "An docket" with its fixed cells in either layout, "An testdocket" with those of a design.
namespace tarvik::test {
namespace {

constexpr std::size_t wide = 30;

/// The reports of a clerk, and templates with something in each of their rows.
class Dockets : public ReportDesk {
protected:
    PlainTable suf; ///< keeps what a shorter record does not reach, over the runs
    Report all, part;
    Cells fixed, blank; ///< a template before and after it is emptied, but for its name in the first cell
    static constexpr std::array<std::size_t, 6> lengths{33, 34, 45, 46, 68, 69};
    std::size_t next_length = 0;

    Dockets()
    {
        for (const char* name : {"z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx"}) started.installation.write(name, "x");
        for (int row = 1; row <= 110; ++row) fixed[{row, row % 12 + 1}] = U"fixed" + number_text(row);
        fixed[{1000, 10}] = fixed[{1000, 11}] = fixed[{1001, 10}] = U"at the end of what is emptied";
        blank = fixed;
        std::erase_if(blank, [](const auto& cell) {
            return cell.first.first >= 13 && cell.first.first <= 1000 && cell.first.second <= 10;
        });
    }

    void lay_out()
    {
        write_report("3139.txt", all);
        write_report("3138.txt", part);
        office.files.clear();
        for (const Text name : {U"z2.xlsx", U"z3.xlsx", U"z5.xlsx", U"z6.xlsx"}) {
            fixed[{1, 1}] = name;
            preset(name, fixed);
        }
        program.blank_templates.clear();
        open_report(all);
    }
    /// Up to so many devices for each of four receipts, or lists as long as templates hold and one longer; most
    /// devices, but none of the first receipt, are out of warranty.
    void random_reports(RandomFields& random, std::size_t fields, std::size_t most)
    {
        all.clear();
        part.clear();
        for (int key = 10; key < 14; ++key) {
            const bool is_long = most > lengths.front();
            const std::size_t count = is_long ? lengths.at(next_length++ % lengths.size()) : random.below(most);
            for (std::size_t device = 0; device <= count; ++device) {
                all.push_back(random.record(fields, 3, U"49000000" + number_text(key)));
                all.back()[0] = number_text(all.size());
                if (all.back().size() > 3) all.back()[3] = U"RMA7100" + number_text(key);
                if (key > 10 && (is_long ? device < count : random.below(4) > 0)) part.push_back(all.back());
            }
        }
        lay_out();
    }
    /// Each receipt's docket is what `predict` makes of the emptied template; it gives its path too.
    void expect_dockets(const std::function<Text(Cells& cells, std::size_t every, std::size_t outside)>& predict)
    {
        std::map<Text, Cells> expected;
        suf.scan(all, U"4900");
        suf.split();
        for (const Text& key : suf.keys(3)) {
            const std::size_t every = suf.scan(all, key), outside = suf.scan(part, key);
            if (outside == 0) continue;
            suf.split();
            Cells cells = blank;
            cells[{1, 1}] =
                Text(is_older() ? (outside > 45 ? U"z3.xlsx" : U"z2.xlsx") : (outside > 33 ? U"z6.xlsx" : U"z5.xlsx"));
            const Text path = predict(cells, every, outside);
            expected[path] = cells;
        }
        expect_saved(expected);
        expect_idle();
        EXPECT_EQ(program.run.older_layouts, is_older() ? expected.size() : 0U);
    }
    bool is_older() const { return form1.query_box().text() == U"something else"; }

    /// The same devices, one receipt, in both reports.
    void devices(int count, const Text& receipt = U"4900000001")
    {
        for (int i = 0; i < count; ++i) {
            all.push_back(numbered_record(wide));
            all.back()[0] = number_text(all.size());
            all.back()[2] = receipt;
            all.back()[4] = U"Router" + number_text(i);
        }
        part = all;
        lay_out();
    }
};

using Docket = Dockets;

TEST_F(Docket, blanks_only_what_is_not_known_to_be_empty)
{
    devices(1);
    devices(1, U"4900000002");
    started.installation.write("3137.txt", "head\r\n");
    press_enter(U"An docket");
    tick(form1.Timer3);
    EXPECT_EQ(office.of(U"z3.xlsx").size(), 1U);
    started.installation.write("z3.xlsx", "changed by hand");
    tick(form1.Timer3);
    EXPECT_EQ(office.of(U"z3.xlsx").size(), 2U);
    EXPECT_EQ(office.of(U"z2.xlsx").size(), 1U);
}

// What a docket holds by either layout, written over `cells`; `suf` holds the receipt's records.
void predict(Cells& cells, const PlainTable& suf, std::size_t every, std::size_t outside, bool older)
{
    const auto at = [&](std::size_t column) { return suf.at(0, column); };
    for (std::size_t i = 0; i < outside; ++i)
        for (int column = 1; column <= 4; ++column)
            cells[{(older ? 13 : 12) + static_cast<int>(i), column}] =
                upper(suf.at(i, static_cast<std::size_t>(column) + 3));
    const Text contact = at(9) + U"     " + at(10);
    if (older) {
        cells[{8, 1}] = U"客户名称： " + at(8);
        cells[{9, 1}] = U"客户联系人及电话:" + contact;
        cells[{10, 1}] = U"收货凭证号:" + at(3);
        cells[{11, 1}] = U"返修总台数     " + number_text(every) + U"     保内台数     " +
                         number_text(static_cast<double>(every) - static_cast<double>(outside)) + U"     保外台数    " +
                         number_text(outside);
        cells[{outside > 45 ? 81 : 59, 1}] = U"总金额:             ";
    } else {
        cells[{7, 2}] = at(8);
        cells[{8, 2}] = contact;
        cells[{9, 2}] = at(3);
        cells[{10, 2}] = static_cast<double>(every);
        cells[{10, 5}] = static_cast<double>(every) - static_cast<double>(outside);
        cells[{10, 7}] = static_cast<double>(outside);
    }
}

TEST_F(Docket, whole_workbooks_of_random_reports_in_both_layouts)
{
    RandomFields random(51);
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const bool older = round % 2 == 1;
        Report orders;
        for (const int key : {11, 13}) {
            orders.push_back(random.record(13, 3, U"7100" + number_text(key)));
            orders.back()[0] = number_text(key);
        }
        write_report("3137.txt", orders);
        random_reports(random, 14, round % 4 < 2 ? 12 : 81);
        press_enter(U"An docket");
        if (older) form1.query_box().set_text(U"something else");
        run();
        expect_dockets([&](Cells& cells, std::size_t every, std::size_t outside) {
            predict(cells, suf, every, outside, older);
            Text receipt = suf.at(0, 3), number;
            const Text field = suf.at(0, 4), order = field.size() > 3 ? field.substr(3) : Text();
            suf.set(0, 4, order);
            if (suf.scan(orders, order) > 0) {
                suf.split();
                number = suf.at(0, 12);
                cells[older ? std::pair{9, 6} : std::pair{8, 6}] = number;
            }
            if (older) return U"d:\\Atarvik output\\" + safe_name_part(receipt + U"-" + number) + U".xlsx";
            if (outside > 68) receipt += U"陈默然";
            return sheet_file(suf.at(0, 7), U"-" + receipt + U"-" + number);
        });
    }
}

class TestDocket : public Dockets {
protected:
    std::vector<Text> boxes1 = std::vector<Text>(50, U"-1"), boxes2 = boxes1;

    void write_design()
    {
        Text line = U"4900";
        for (const auto* boxes : {&boxes1, &boxes2})
            for (const Text& box : *boxes) line += U"*" + box;
        started.installation.write("automation.bin", encode(line + U"*3\r\n"));
    }
};

// The number of a box that takes part in the design.
std::optional<int> used(const Text& box)
{
    const auto value = number(box);
    return value && *value >= 0 && *value == static_cast<int>(*value) ? std::optional(static_cast<int>(*value))
                                                                      : std::nullopt;
}

// What a docket writes into its template, written over `cells`.
void predict(Cells& cells, const PlainTable& suf, const std::vector<Text>& to, const std::vector<Text>& from,
             std::size_t records, std::size_t all)
{
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
}

TEST_F(TestDocket, whole_workbooks_of_random_reports_and_designs)
{
    RandomFields random(52);
    const std::vector<Text> numbers{U"-1", U"-1", U"0", U"1", U"2", U"5", U"9", U"12", U" 3 ", U"180", U"1.5", U"x"};
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        for (auto* boxes : {&boxes1, &boxes2})
            for (Text& box : *boxes) box = numbers[random.below(numbers.size())];
        if (round % 3) boxes1[28] = round % 3 == 1 ? U"12" : U"0";
        write_design();
        random_reports(random, wide, round % 4 ? 12 : 80);
        play(U"An testdocket");
        expect_dockets([&](Cells& cells, std::size_t every, std::size_t outside) {
            predict(cells, suf, boxes1, boxes2, outside, every);
            const Text mark = outside > 68 ? U"陈默然" : U"";
            return sheet_file(suf.at(0, 24), U"-" + suf.at(0, 16) + mark + U"-" + suf.at(0, 17));
        });
        for (const Text name : {U"z5.xlsx", U"z6.xlsx"}) {
            blank[{1, 1}] = name;
            EXPECT_EQ(lines_of(workbook(installed(program, name))), lines_of(blank));
        }
    }
}

TEST_F(TestDocket, an_empty_list_row_means_row_0_and_a_negative_one_no_list)
{
    boxes1[29] = U"2";
    boxes2[29] = U"6";
    devices(3);
    for (const auto& [first, rows] : {std::pair{Text(U""), 2U}, {Text(U"-1"), 0U}, {Text(U"1"), 3U}}) {
        boxes1[28] = first.empty() ? U" " : first;
        write_design();
        press_enter(U"An testdocket");
        form1.query_box().set_text(U"An testdocket");
        program.form4.Text1[28].set_text(first);
        run();
        std::size_t written = 0;
        for (const auto& [place, value] : office.tasks.back().cells) written += value == CellValue(Text(U"f6"));
        EXPECT_EQ(written, rows) << to_utf8(first);
    }
}

TEST_F(TestDocket, without_its_command_nothing_is_made)
{
    devices(2);
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

#include "dockets/dockets.h"
#include "tests/support/report_desk.h"

namespace tarvik::test {
namespace {

/// The desk of a clerk: three reports in the installation folder, one of them open, and the command typed.
class Docket : public ReportDesk {
protected:
    // Field 3 receipt, 4 order key behind "abc", 5 to 7 list, 8 customer, 9 contact, 10 telephone.
    static Text device(TextView receipt, TextView order, TextView customer = U"华星", int number = 0)
    {
        return U"x\t9\t" + receipt + U"\tABC" + order + U"\tRouter" + number_text(number) + U"\t端口坏\tF.1\t" +
               customer + U"\t王工\t138/0755\r\n";
    }

    void reports(const Text& all, const Text& part, const Text& orders)
    {
        started.installation.write("3139.txt", encode(U"head\r\n" + all));
        started.installation.write("3138.txt", encode(U"head\r\n" + part));
        started.installation.write("3137.txt", encode(U"head\r\n" + orders));
        for (const char* name : {"z2.xlsx", "z3.xlsx", "z5.xlsx", "z6.xlsx"}) started.installation.write(name, "x");
        started.open_text(U"head\r\n" + all);
    }

    // What is stored in a cell; nothing when nobody wrote it.
    static Text text_of(const RecordedTask& task, int row, int column)
    {
        const auto cell = task.cells.find({row, column});
        if (cell == task.cells.end()) return U"(untouched)";
        if (const auto* number = std::get_if<double>(&cell->second)) return U"=" + number_text(*number);
        return std::get<Text>(cell->second);
    }
};

TEST_F(Docket, template_and_mark_go_by_the_length_of_the_list)
{
    for (const auto& [lines, name, mark, older_name] : {std::tuple{33, U"z5.xlsx", false, U"z2.xlsx"},
                                                        {34, U"z6.xlsx", false, U"z2.xlsx"},
                                                        {45, U"z6.xlsx", false, U"z2.xlsx"},
                                                        {46, U"z6.xlsx", false, U"z3.xlsx"},
                                                        {68, U"z6.xlsx", false, U"z3.xlsx"},
                                                        {69, U"z6.xlsx", true, U"z3.xlsx"}}) {
        Text devices;
        for (int i = 0; i < lines; ++i) devices += device(U"4900000001", U"", U"华星", i);
        reports(devices, devices, {});
        office.tasks.clear();
        press_enter(U"An docket");
        run();
        const RecordedTask docket = office.tasks.back();
        EXPECT_TRUE(docket.opened.ends_with(name)) << lines;
        EXPECT_EQ(docket.saved_as.find(U"4900000001陈默然-.xlsx") != Text::npos, mark) << lines;
        EXPECT_EQ(text_of(docket, 11 + lines, 2), U"ROUTER" + number_text(lines - 1)) << lines;
        EXPECT_EQ(text_of(docket, 8, 6), U"(untouched)") << "a key of three characters finds no order";
        started.open_text(U"head\r\n" + devices);
        press_enter(U"An docket");
        form1.query_box().set_text(U"something else");
        run();
        EXPECT_TRUE(office.tasks.back().opened.ends_with(older_name)) << lines;
    }
}

TEST_F(Docket, blanks_only_what_is_not_known_to_be_empty)
{
    const Text devices = device(U"4900000001", U"k1") + device(U"4900000002", U"k2");
    reports(devices, devices, {});
    press_enter(U"An docket");
    tick(form1.Timer3);
    EXPECT_EQ(office.of(U"z3.xlsx").size(), 1U);
    started.installation.write("z3.xlsx", "changed by hand");
    tick(form1.Timer3);
    EXPECT_EQ(office.of(U"z3.xlsx").size(), 2U);
    EXPECT_EQ(office.of(U"z2.xlsx").size(), 1U);
}

// What a docket holds by either layout, written over `cells`; `suf` holds the receipt's records.
void predict(Cells& cells, const PlainTable& suf, const Report& all, const Report& part, const Text& key, bool older)
{
    const double every = static_cast<double>(PlainTable().scan(all, key));
    const auto outside = static_cast<int>(PlainTable().scan(part, key));
    const auto at = [&](std::size_t column) { return suf.at(0, column); };
    for (int i = 0; i < outside; ++i)
        for (int column = 1; column <= 4; ++column)
            cells[{(older ? 13 : 12) + i, column}] =
                upper(suf.at(static_cast<std::size_t>(i), static_cast<std::size_t>(column) + 3));
    const Text contact = at(9) + U"     " + at(10);
    if (older) {
        cells[{8, 1}] = U"客户名称： " + at(8);
        cells[{9, 1}] = U"客户联系人及电话:" + contact;
        cells[{10, 1}] = U"收货凭证号:" + at(3);
        cells[{11, 1}] = U"返修总台数     " + number_text(every) + U"     保内台数     " +
                         number_text(every - outside) + U"     保外台数    " + number_text(outside);
        cells[{outside > 45 ? 81 : 59, 1}] = U"总金额:             ";
    } else {
        cells[{7, 2}] = at(8);
        cells[{8, 2}] = contact;
        cells[{9, 2}] = at(3);
        cells[{10, 2}] = every;
        cells[{10, 5}] = every - outside;
        cells[{10, 7}] = static_cast<double>(outside);
    }
}

TEST_F(Docket, whole_workbooks_of_random_reports_in_both_layouts)
{
    RandomFields random(51);
    PlainTable suf;
    Cells fixed;
    for (int row = 1; row <= 110; ++row) fixed[{row, row % 12 + 1}] = U"fixed" + number_text(row);
    fixed[{1000, 10}] = fixed[{1000, 11}] = fixed[{1001, 10}] = U"at the end of what is emptied";
    for (int round = 0; round < 12; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const bool older = round % 2 == 1;
        Report all, part, orders;
        for (int key = 0; key < 4; ++key)
            for (std::size_t count = random.below(round % 4 < 2 ? 12 : 81) + 1; count > 0; --count) {
                all.push_back(random.record(14, 3, U"49000000" + number_text(10 + key)));
                all.back()[0] = number_text(all.size());
                if (all.back().size() > 3) all.back()[3] = U"RMA7100" + number_text(10 + key);
                if (key && random.below(4)) part.push_back(all.back());
            }
        for (const int key : {11, 13}) {
            orders.push_back(random.record(13, 3, U"7100" + number_text(key)));
            orders.back()[0] = number_text(key);
        }
        reports({}, {}, {});
        write_report("3139.txt", all);
        write_report("3138.txt", part);
        write_report("3137.txt", orders);
        office.files.clear();
        for (const Text name : {U"z2.xlsx", U"z3.xlsx", U"z5.xlsx", U"z6.xlsx"}) preset(name, fixed);
        program.blank_templates.clear();
        open_report(all);
        press_enter(U"An docket");
        if (older) form1.query_box().set_text(U"something else");
        run();

        std::map<Text, Cells> expected;
        suf.scan(all, U"4900");
        suf.split();
        for (const Text& key : suf.keys(3)) {
            suf.scan(all, key);
            const std::size_t outside = suf.scan(part, key);
            if (outside == 0) continue;
            suf.split();
            Cells cells = fixed;
            std::erase_if(cells, [](const auto& cell) {
                return cell.first.first >= 13 && cell.first.first <= 1000 && cell.first.second <= 10;
            });
            predict(cells, suf, all, part, key, older);
            Text receipt = suf.at(0, 3), number;
            const Text field = suf.at(0, 4), order = field.size() > 3 ? field.substr(3) : Text();
            suf.set(0, 4, order);
            if (suf.scan(orders, order) > 0) {
                suf.split();
                number = suf.at(0, 12);
                cells[older ? std::pair{9, 6} : std::pair{8, 6}] = number;
            }
            if (!older && outside > 68) receipt += U"陈默然";
            const Text path = older ? U"d:\\Atarvik output\\" + safe_name_part(receipt + U"-" + number) + U".xlsx"
                                    : sheet_file(suf.at(0, 7), U"-" + receipt + U"-" + number);
            expected[path] = cells;
        }
        expect_saved(expected);
        expect_idle();
        EXPECT_EQ(program.run.older_layouts, older ? expected.size() : 0U);
    }
}

} // namespace
} // namespace tarvik::test

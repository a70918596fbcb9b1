#include "calendar/calendar.h"
#include "dockets/dockets.h"
#include "tests/support/report_desk.h"

namespace tarvik::test {
namespace {

using Texts = std::map<std::pair<int, int>, Text>;

constexpr std::size_t wide = 38;

Texts predicted(const PlainTable& suf, bool with_cause)
{
    const auto at = [&](std::size_t column) { return suf.at(0, column); };
    Texts texts{{{1, 2}, at(5)},
                {{1, 6}, at(18).substr(0, at(18).find(U' '))},
                {{9, 6}, at(22)},
                {{9, 4}, at(29)},
                {{9, 2}, U"维修服务部"},
                {{2, 2}, at(3)},
                {{10, 1}, U"检测结果（必要时附照片)\r\n        " + at(33)},
                {{2, 6}, telecall(at(4))},
                {{5, 1}, upper(at(9))},
                {{5, 2}, upper(at(10))},
                {{5, 3}, upper(at(15))},
                {{5, 4}, upper(at(35))}};
    if (with_cause) texts[{6, 1}] = U"故障申报：此设备由于以下原因导致无法维修，建议报废。\r\n        ：" + at(30);
    return texts;
}

std::vector<std::string> lines_of(const Texts& texts)
{
    std::vector<std::string> lines;
    for (const auto& [place, text] : texts)
        lines.push_back(std::to_string(place.first) + "," + std::to_string(place.second) + " " + to_utf8(text));
    return lines;
}

class RepairReport : public ReportDesk {
protected:
    void SetUp() override { std::filesystem::create_directory(started.installation.path() / "photo"); }

    static Record device(const Text& number)
    {
        Record record = numbered_record(wide);
        record[0] = U"不可修复";
        record[14] = number;
        return record;
    }
    void lay_out(const Report& report)
    {
        write_report("3158.txt", report);
        open_report(report);
    }
};

TEST_F(RepairReport, whole_documents_of_random_reports)
{
    RandomFields random(56);
    PlainTable suf;
    started.installation.write("photo/dev-102.jpg", "picture");
    for (int round = 0; round < 10; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Report report;
        for (int number = 0; number < 6; ++number)
            for (std::size_t count = random.below(3) + 1; count > 0; --count) {
                report.push_back(random.record(wide, 15, U"DeV-" + number_text(100 + number)));
                report.back()[0] = (random.below(4) ? U"不可修复" : U"已修复") + number_text(count);
            }
        lay_out(report);
        office.documents.clear();
        play(U"An dockword");

        suf.scan(report, U"不可修复");
        suf.split();
        std::size_t sheet = 0;
        for (const Text& key : suf.keys(15)) {
            suf.scan(report, key);
            suf.split();
            ASSERT_LT(sheet, office.documents.size());
            const RecordedDocumentTask& task = office.documents[sheet++];
            EXPECT_EQ(lines_of(task.cells), lines_of(predicted(suf, false)));
            EXPECT_EQ(to_utf8(task.saved_as), to_utf8(sheet_file(suf.at(0, 14), U"-" + key, U".doc")));
            EXPECT_TRUE(task.opened.ends_with(U"\\wtest1.doc"));
            EXPECT_EQ(task.pictures.size(), key == U"dev-102" ? 1U : 0U);
            EXPECT_EQ(task.printed, 0);
            EXPECT_TRUE(task.closed && task.quit);
        }
        EXPECT_EQ(sheet, office.documents.size());
        EXPECT_TRUE(form1.window.caption().ends_with(U" OK !"));
        expect_idle();
    }
}

TEST_F(RepairReport, the_flags_choose_the_template_and_tell_the_cause)
{
    lay_out({device(U"Dev-1")});
    press_enter(U"An dockword");
    PlainTable suf;
    suf.scan({device(U"Dev-1")}, U"dev-1");
    suf.split();
    for (const auto& [first, second, name] : {std::tuple{true, true, U"wtest1.doc"},
                                              {true, false, U"wtest3.doc"},
                                              {false, false, U"wtest5.doc"},
                                              {false, true, U"wtest2.doc"}}) {
        excecopyword(program, first, second);
        EXPECT_TRUE(office.documents.back().opened.ends_with(name));
        EXPECT_EQ(lines_of(office.documents.back().cells), lines_of(predicted(suf, !first && !second)));
    }
}

TEST_F(RepairReport, saving_and_printing_go_by_the_whole_text_of_the_box)
{
    lay_out({device(U"Dev-1")});
    for (const auto& [text, saves, prints] : {std::tuple{U"An dockword", true, 0},
                                              {U"An dockwordp", true, 1},
                                              {U"An dockwordp ", true, 0},
                                              {U"An dockwordpp", true, 0},
                                              {U"x An dockwordp", false, 0}}) {
        play(text);
        EXPECT_EQ(!office.documents.back().saved_as.empty(), saves) << to_utf8(Text(text));
        EXPECT_EQ(office.documents.back().printed, prints) << to_utf8(Text(text));
        EXPECT_EQ(program.run.ahead_of_command, !saves);
    }
}

TEST_F(RepairReport, the_picture_bears_the_device_number_in_lower_case)
{
    lay_out({device(U"A/1B"), device(U"..\\photo\\A1B")});
    started.installation.write("photo/a_1b.jpg", "picture");
    started.installation.write("photo/a1b.jpg", "picture");
    play(U"An dockword");
    ASSERT_EQ(office.documents.size(), 2U);
    EXPECT_EQ((office.documents[0].pictures[{9, 1}]), installed(program, U"photo\\a_1b.jpg"));
    EXPECT_TRUE(office.documents[1].pictures.empty()) << "no number leads out of the folder";
}

TEST_F(RepairReport, a_device_that_the_report_no_longer_holds_gets_the_row_that_stands)
{
    lay_out({device(U"Dev-1"), device(U"Dev-2")});
    press_enter(U"An dockword");
    write_report("3158.txt", {device(U"Dev-1")});
    run();
    ASSERT_EQ(office.documents.size(), 2U);
    EXPECT_EQ((office.documents[1].cells[{5, 3}]), U"DEV-1");
    EXPECT_EQ(office.documents[1].saved_as, office.documents[0].saved_as);
}

TEST_F(RepairReport, a_selected_option_stops_the_run_with_a_message)
{
    lay_out({device(U"Dev-1"), device(U"Dev-2")});
    press_enter(U"An dockword");
    started.dialogs.take_messages();
    select_option(form1, form1.Option2);
    run();
    EXPECT_EQ(started.dialogs.take_messages().size(), 1U);
    EXPECT_TRUE(office.documents.empty());
    expect_idle();
}

} // namespace
} // namespace tarvik::test

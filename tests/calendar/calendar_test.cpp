#include "calendar/attendance/attendance.h"
#include "calendar/calendar.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

TEST(TimeOfDay, is_read_behind_a_date)
{
    const std::pair<const char32_t*, double> times[] = {{U"2020-01-05 8:05:09", 29109},
                                                        {U"8:05:09", 29109},
                                                        {U"23:59:59", 86399},
                                                        {U"2020-01-05 12:00:01", 43201},
                                                        {U"0:00:00", 0},
                                                        {U"12:30", 0},
                                                        {U"", 0}};
    for (const auto& [text, seconds] : times) EXPECT_EQ(sntime(text), seconds) << to_utf8(text);
}

TEST(Numbers, are_rounded_half_up_to_two_decimals)
{
    const std::pair<double, const char32_t*> rounded[] = {
        {0.5166666, U"0.52"}, {8.994, U"8.99"}, {2.5, U"2.5"}, {-1, U"-1"},     {0, U"0"},
        {8.985, U"8.99"},     {0.005, U"0.01"}, {12.0, U"12"}, {7.98, U"7.98"}, {2.9999999, U"3"}};
    for (auto [value, text] : rounded) EXPECT_EQ(wct(value), Text(text));
    double noisy = 17.5 - 8.52 - 1;
    EXPECT_EQ(wct(noisy), U"7.98");
    EXPECT_EQ(noisy, 7.98);
    EXPECT_EQ(wcnum(-1), U"-1      ");
    EXPECT_EQ(wcnum(0.52), U"0.52    ");
    EXPECT_EQ(wcnum(1234.567), U"");
}

TEST(Days, are_those_of_the_calendar)
{
    EXPECT_EQ(steaddaf(2000, 1, 1, 2001, 1, 1), 366);
    EXPECT_EQ(steaddaf(1900, 3, 1, 1900, 2, 28), -1);
    EXPECT_EQ(steaddaf(2021, 2, 31, 2021, 3, 3), 0) << "a day behind the last of its month counts on";
    EXPECT_EQ(fenzyfenm(100, 2000), 100);
    EXPECT_EQ(fenzyfenm(12, 18), 6);
    EXPECT_EQ(fenmax(3, 10), 7);
    const std::pair<double, double> remainders[] = {{15, 1}, {14, 0}, {-1, 6}, {-7, 0}, {-8, 6}};
    for (const auto& [x, remainder] : remainders) EXPECT_EQ(fenmod(7, x), remainder) << x;
}

TEST(CompactTexts, dates_and_telephone_numbers)
{
    const std::tuple<const char32_t*, const char32_t*> dates[] = {{U"2020.01.05", U"20200105"},
                                                                  {U"2020/1/5", U"202015"},
                                                                  {U"20200105", U"2020-01-05"},
                                                                  {U"2020-01-05", U"2020-01-05"},
                                                                  {U"12", U"12--"}};
    for (const auto& [told, compact] : dates) {
        Text date = told;
        EXPECT_EQ(xsd(date), Text(compact));
    }
    EXPECT_EQ(telecall(U"0755/138"), U"138");
    EXPECT_EQ(telecall(U"138/0755"), U"138");
    EXPECT_EQ(telecall(U"0755"), U"0755");
}

TEST(DateText, is_normalised_and_read)
{
    const std::tuple<const char32_t*, const char32_t*, const char32_t*> normalised[] = {
        {U"20200105", U"2020-01-05", U"2020-01-05"},
        {U"2020.1.5", U"2020.1.5", U"2020-1-5"},
        {U"2020/01/05", U"2020/01/05", U"2020-01-05"},
        {U"2020\\1\\5", U"2020\\1\\5", U"2020-1-5"},
        {U"abcdefgh", U"abcd-ef-gh", U"abcd-ef-gh"},
        {U"20-1-5", U"20-1-5", U"error"},
        {U"", U"", U"error"}};
    for (const auto& [written, rewritten, date] : normalised) {
        Text text = written;
        EXPECT_EQ(dsx(text), Text(date));
        EXPECT_EQ(text, Text(rewritten));
    }
    EXPECT_EQ(*day_of(U"2020-3-1") - *day_of(U"2020-02-28"), 2);
    EXPECT_EQ(*day_of(U"20-01-05"), *day_of(U"2020-1-5"));
    EXPECT_EQ(*day_of(U"99-12-31") + 1, *day_of(U"2000-1-1"));
    EXPECT_EQ(*day_of(U"29-12-31"), *day_of(U"2029-12-31"));
    EXPECT_EQ(*day_of(U"30-1-1"), *day_of(U"1930-1-1"));
    for (const char32_t* none : {U"abcd-ef-gh", U"2021-02-29", U"1900-02-29", U"2020-0-1", U"0000-01-01", U"2020-13-01",
                                 U"2020-1", U"2020-1-5-1", U"-1-5-2020", U"2020-001-5", U"2020-01-05x"})
        EXPECT_FALSE(day_of(none)) << to_utf8(none);
}

class AttendanceDesk : public testing::Test {
protected:
    TestProgram test;

    std::string list_of(const Text& document)
    {
        test.open_text(document);
        test.form1().query_box().set_text(U"An kqtest");
        an_kqtest(test.program);
        return to_utf8(test.form1().RichTextBox3.text());
    }
};

TEST_F(AttendanceDesk, judges_each_day_by_its_stamps)
{
    struct Case {
        const char32_t *in, *out, *line; ///< the line behind the person; empty for none
    };
    const Case cases[] = {
        {U"2016-09-22 08:30:00.000", U"2016-09-22 17:30:00.000",
         U"2016-09-22\t星期四\t上班打卡：08:30:00\t正常\t下班打卡：17:30:00\t正常\t8       "},
        {U"2016-09-23 08:31:45.000", U"2016-09-23 17:30:00.000",
         U"2016-09-23\t星期五\t上班打卡：08:31:45\t迟到\t下班打卡：17:30:00\t迟到\t7.98    "},
        {U"2016-09-24 08:45:00.0", U"2016-09-24 17:20:00.0",
         U"2016-09-24\t星期六\t上班打卡：08:45:00\t倒退\t下班打卡：17:20:00\t倒退\t7.58    "},
        {U"2016-09-25 8:00:00.0", U"2016-09-25 17:20:00.0",
         U"2016-09-25\t星期日\t上班打卡：8:00:00\t早退\t下班打卡：17:20:00\t正常\t8.33    "},
        {U"2016-09-26 08:00:00.0", U"2016-09-26 20:30:00.0",
         U"2016-09-26\t星期一\t上班打卡：08:00:00\t正常\t下班打卡：20:30:00\t加班\t2.5     "},
        {U"2016-09-27 09:00:00.0", U"2016-09-27 09:00:00.0",
         U"2016-09-27\t星期二\t上班打卡：09:00:00\t倒退\t下班打卡：09:00:00\t异常\t-1      "},
        {U"2016-09-27 11:30:00.0", U"2016-09-27 11:30:00.0",
         U"2016-09-27\t星期二\t上班打卡：11:30:00\t倒退\t下班打卡：11:30:00\t旷工\t-1      "},
        {U"2016-09-27 08:00:00.0", U"2016-09-27 08:01:00.0",
         U"2016-09-27\t星期二\t上班打卡：08:00:00\t早退\t下班打卡：08:01:00\t旷工\t-0.98   "},
        {U"2016-09-22 17:00:00.0", U"2016-09-22 09:00:00.0",
         U"2016-09-22\t星期四\t上班打卡：17:00:00\t倒退\t下班打卡：09:00:00\t旷工\t-9      "},
        {U"2016-09-22  8:00:00.0", U"2016-09-22 18:00:00.0",
         U"2016-09-22\t星期四\t上班打卡： 8:00:00\t正常\t下班打卡：18:00:00\t正常\t9       "},
        {U"2016-09-22 00:00:00.0", U"2016-09-22 24:00:00.0", U""},
        {U"", U"2016-09-22 24:00:00.0", U""},
        {U"2016-09-22", U"2016-09-22 17:30:00.0", U""},
        {U"2016-09-22 08:30:00.0", U"2017-02-29 17:30:00.0",
         U"2017-02-29\t星期三\t上班打卡：08:30:00\t正常\t下班打卡：17:30:00\t正常\t8       "},
        {U"2016-09-22 08:30:00.0", U"2016-13-01 17:30:00.0", U""},
    };
    Text document, expected;
    for (const Case& one : cases) {
        document += U"x\t系统设备制造部\t张三\t\t\t\t" + Text(one.in) + U"\t" + one.out + U"\r\n";
        if (*one.line) expected += U"张三\t" + Text(one.line) + U"\r\n";
    }
    EXPECT_EQ(list_of(document), to_utf8(expected));
    EXPECT_EQ(test.form1().number_box().text(), U"11");
    EXPECT_THAT(test.dialogs.take_messages(),
                testing::ElementsAre(testing::AllOf(testing::HasSubstr("\r\n张三：2016-09-22\r\n"),
                                                    testing::HasSubstr("\r\n张三：2016-13-01 17:30:00.0"))));

    test.form1().comp = true;
    an_kqtest(test.program);
    EXPECT_EQ(test.dialogs.take_messages().size(), 1U);
    EXPECT_EQ(test.form1().sugcount, 0);
}

Text row(TextView person, TextView in, TextView out)
{
    return U"x\t系统设备制造部\t" + person + U"\t\t\t\t2016-09-22 " + in + U":00.0\t2016-09-22 " + out + U":00.0\r\n";
}

// Nine hours from 8:36 were above nine hours, those from 8:33 were not.
TEST_F(AttendanceDesk, judges_a_span_wherever_it_begins)
{
    const auto clock = [](int minutes) {
        return Text(minutes < 600 ? U"0" : U"") + number_text(minutes / 60) + (minutes % 60 < 10 ? U":0" : U":") +
               number_text(minutes % 60);
    };
    struct Span {
        int minutes;
        const char* ending;
    };
    for (const Span span : {Span{540, "迟到\t8       \r\n"}, {576, "正常\t8.6     \r\n"}, {270, "倒退\t3.5     \r\n"}})
        for (int in = 511; in < 601; in += 3)
            EXPECT_THAT(list_of(row(U"甲", clock(in), clock(in + span.minutes))), testing::EndsWith(span.ending))
                << in << ' ' << span.minutes;
}

// The row behind the last one kept the stamps of a longer document, and a refused scan the whole of it.
TEST_F(AttendanceDesk, lists_nobody_of_an_earlier_document)
{
    list_of(row(U"甲", U"08:00", U"18:00") + row(U"乙", U"08:00", U"18:00"));
    EXPECT_THAT(list_of(row(U"丙", U"08:00", U"18:00")),
                testing::AllOf(testing::HasSubstr("丙"), testing::Not(testing::HasSubstr("乙"))));
    EXPECT_EQ(list_of(U"nobody\r\n"), "");
    EXPECT_EQ(test.form1().number_box().text(), U"0");

    test.form1().Option1.set_value(true);
    EXPECT_THROW(list_of(row(U"丁", U"08:00", U"18:00")), Failure);
    EXPECT_EQ(to_utf8(test.form1().RichTextBox3.text()), "\r\n");
}

} // namespace
} // namespace tarvik::test

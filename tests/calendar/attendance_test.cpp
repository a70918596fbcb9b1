#include "calendar/attendance/attendance.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

TEST(Attendance, judges_each_day_by_its_stamps)
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
        {U"2016-09-28 14:00:00.0", U"2016-09-28 14:00:00.0",
         U"2016-09-28\t星期三\t上班打卡：14:00:00\t倒退\t下班打卡：14:00:00\t旷工\t-1      "},
        {U"2016-09-21 08:00:00.0", U"2016-09-21 18:00:00.0",
         U"2016-09-21\t星期三\t上班打卡：08:00:00\t正常\t下班打卡：18:00:00\t正常\t9       "},
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
    TestProgram test;
    Text document, expected;
    for (const Case& one : cases) {
        document += U"x\t系统设备制造部\t张三\t\t\t\t" + Text(one.in) + U"\t" + one.out + U"\r\n";
        if (*one.line) expected += U"张三\t" + Text(one.line) + U"\r\n";
    }
    test.open_text(document);
    test.form1().query_box().set_text(U"An kqtest");
    an_kqtest(test.program);
    EXPECT_EQ(to_utf8(test.form1().RichTextBox3.text()), to_utf8(expected));
    EXPECT_EQ(test.form1().number_box().text(), U"13");
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

#include "runs/keyed_scans.h"

#include "platform/text/code_page.h"
#include "tests/support/failure_of.h"
#include "tests/support/test_program.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class KeyedScans : public testing::Test {
protected:
    TestProgram desk;
    Program& program = desk.program;
    Form1& form1 = desk.form1();

    KeyedScans()
    {
        form1.query_box().set_text(U"An");
        desk.open_text(U"head\r\na\tk1\r\nb\tk1\r\n");
    }
};

TEST_F(KeyedScans, an_empty_report_is_reported_and_the_pane_is_scanned_as_it_is)
{
    desk.installation.write("3138.txt", "");
    EXPECT_EQ(query2(program, U"k1", false), 2);
    EXPECT_THAT(desk.dialogs.take_messages(), ElementsAre("Tarvik 计算|打开文件失败！"));
    EXPECT_EQ(form1.sufcount, 2);
    EXPECT_EQ(form1.answer, 1);
}

TEST_F(KeyedScans, each_reads_its_own_report_and_none_the_pane)
{
    struct Case {
        std::string file;
        std::function<int(Program&)> scan;
    };
    const Case cases[] = {
        {"3139.txt", [](Program& one) { return query2(one, U"k1", true); }},
        {"3138.txt", [](Program& one) { return query2(one, U"k1", false); }},
        {"3137.txt", [](Program& one) { return query3(one, U"k1", true); }},
        {"保留.txt", [](Program& one) { return query3(one, U"k1", false); }},
        {"3158.txt", [](Program& one) { return query5(one, U"k1", true); }},
        {"other.txt", [](Program& one) { return query7(one, U"k1", installed(one, U"other.txt")); }},
    };
    for (const Case& one : cases) {
        EXPECT_THAT(failure_of([&] { one.scan(program); }), HasSubstr(one.file)) << "it is not there yet";
        desk.installation.write(one.file, "head\r\nx\tk1\r\ny\tk1\r\nz\tk1\r\n");
        EXPECT_EQ(one.scan(program), 3) << one.file;
        std::filesystem::remove(desk.installation.path() / one.file);
        desk.open_text(U"head\r\na\tk1\r\nb\tk1\r\n");
    }
    EXPECT_EQ(query5(program, U"k1", false), 2);
    EXPECT_EQ(query7(program, U"k1", {}), 2);
    EXPECT_THAT(desk.dialogs.take_messages(), ElementsAre());
}

} // namespace
} // namespace tarvik::test

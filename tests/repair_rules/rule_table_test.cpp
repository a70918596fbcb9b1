#include "repair_rules/rules.h"
#include "tests/support/failure_of.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace tarvik::repair_rules {
namespace {

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    const auto at = text.find(from);
    EXPECT_NE(at, text.npos) << from;
    return text.replace(at, from.size(), to);
}

/// "line: reason", or "none".
std::string mistake_in(const std::string& table)
{
    const std::string message = test::failure_of([&] { read_rules(from_utf8(table)); });
    const std::string before = "维修规则表第 ", between = " 行：", behind = "。各表没有改动";
    const auto line = message.find(before), reason = message.find(between), end = message.rfind(behind);
    if (line == message.npos || reason == message.npos || end == message.npos) return "none";
    return message.substr(line + before.size(), reason - line - before.size()) + ": " +
           message.substr(reason + between.size(), end - reason - between.size());
}

const std::string small = "数目 | 1 | 1 | 1 | 1\n"
                          "组 | 电信级 | \"ME\" | \"交换机\" 且 \"电信级以太网交换机\"\n"
                          "# 说明\n"
                          "更新 | 电信级 | \"ME-\" 且 \"8\" | \"换cpu\" | 30007309 | 3\n"
                          "收费 | 电信级 | - | 记录 45 15.5\n"
                          "首次 | 电信级 | \"ME-\" 且 \"8\" | \"换cpu\" | 30007309 | 3\r\n"
                          "\n"
                          "行 | 6 | \"报废\" 或 \"原样\" | 10=0 5=\"元器件老化\"\n";

TEST(RuleTable, is_shipped_as_it_is_built_in)
{
    std::ifstream file(std::filesystem::path(test::built_installation()) / u8"维修规则.txt", std::ios::binary);
    const std::string shipped{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(shipped, to_utf8(built_in_rules()));
    EXPECT_EQ(mistake_in(shipped), "none");
    for (const std::string line :
         {"更新 | 收发器 | -                          | \"换复位芯片\"       | 30000881 | 1\n",
          "首次 | 转换器 | \"-MSOM-\"                   | \"换电源\"           | 30004572 | 1\n",
          "收费 | 转换器 | -                          | 记录 35 10\n",
          "行 | 2 | \"S2226A\"                | 11=15\n"}) {
        EXPECT_NE(mistake_in(replaced(shipped, line, "")).find(" 条，实有 "), std::string::npos) << line;
        EXPECT_NE(mistake_in(replaced(shipped, line, line + line)), "none") << line;
    }
}

TEST(RuleTable, keeps_the_blank_inside_quotes_and_every_part_of_a_rule)
{
    const auto table =
        read_rules(from_utf8(replaced(small, "换cpu\" | 30007309 | 3\n收费", "换 | cpu \" | 30007309 | 3\n收费")));
    const Rule& rule = table.update.rules.at(0);
    EXPECT_EQ(rule.repair_word, U"换 | cpu ");
    EXPECT_EQ(rule.model.all_of, (std::vector<Text>{U"ME-", U"8"}));
    EXPECT_EQ(table.first_entry.rules.at(0).charges->second, 15.5);
    EXPECT_EQ(table.line_rules.at(0).settings.at(0).value, CellValue(0.0));
    EXPECT_EQ(table.line_rules.at(0).settings.at(1).value, CellValue(U"元器件老化"));
}

TEST(RuleTable, refuses_each_mistake_with_line_and_reason)
{
    const std::string update = "\"换cpu\" | 30007309 | 3\n收费";
    const struct {
        std::string from, to, mistake;
    } cases[] = {
        {"更新 | 电信级", "更新 | 电信", "4: 没有这个组：电信"},
        {update, "\"换CPU\" | 30007309 | 3\n收费", "4: 维修文字里的字母须小写：换CPU"},
        {update, "\"换cpu\" | 3000730 | 3\n收费", "4: 编码须是以 2 或 3 开头的八位数字：3000730"},
        {update, "\"换cpu\" | 40007309 | 3\n收费", "4: 编码须是以 2 或 3 开头的八位数字：40007309"},
        {update, "\"换cpu\" | 30007308 | 3\n收费", "6: 与第 4 行条件相同而编码不同：30007308、30007309"},
        {update, "\"换cpu\" | 30007309 | 4\n收费", "6: 与第 4 行条件相同而数量不同：4、3"},
        {update, "\"换cpu\" | 30007309 | 2\n收费", "6: 与第 4 行条件相同而数量不同：2、3"},
        {update, "\"换cpu\" | 30007309 | 0\n收费", "4: 此处须是大于 0 的整数：0"},
        {update, "\"换cpu\" | 30007309\n收费", "4: 这一行须有 6 至 7 栏，实有 5 栏"},
        {update, "\"换cpu | 30007309 | 3\n收费", "4: 双引号没有成对"},
        {update, "\"\" | 30007309 | 3\n收费", "4: 此处须是双引号内的文字：\"\""},
        {"\"ME-\" 且 \"8\"", "\"ME-\" \"8\"", "4: 文字之间须用“且”或“且无”连接：\"8\""},
        {"\"ME-\" 且 \"8\"", "\"ME-\" 且无 \"8\" 且无 \"9\"", "4: 一个条件里只能有一个“且无”：\"9\""},
        {"收费 | 电信级 | - | 记录 45 15.5", "更新 | 电信级 | \"ME-\" 且 \"8\" | \"换cpu\" | 30007309 | 3",
         "5: 与第 4 行重复"},
        {"收费 | 电信级 | -", "收费 | 电信级 | \"ME\"", "none"},
        {"记录 45 15.5", "45 15.5", "5: 费用须以“记录”或“不变”开头：45 15.5"},
        {"记录 45 15.5", "不变 45", "5: “记录”或“不变”之后须是两个费用：不变 45"},
        {"行 | 6", "行 | 7", "8: 行规则只能看第 2、5、6 列"},
        {"10=0", "13=0", "8: 此处须是“列=数”或“列=\"文字\"”，列为 5 至 12：13=0 5=\"元器件老化\""},
        {"10=0", "10=无", "8: 此处须是数：无"},
        {"首次 |", "初次 |", "6: 第一栏须是 数目、组、更新、首次、收费、行 之一：初次"},
        {"数目 | 1 | 1", "数目 | 1 | 2", "1: 首次规则应有 2 条，实有 1 条"},
        {"数目 | 1 | 1 | 1 | 1\n", "\n", "1: 缺少数目一行"},
    };
    for (const auto& [from, to, mistake] : cases) EXPECT_EQ(mistake_in(replaced(small, from, to)), mistake) << to;
}

} // namespace
} // namespace tarvik::repair_rules

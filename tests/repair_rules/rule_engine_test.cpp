#include "repair_rules/rule_engine.h"

#include <gtest/gtest.h>

namespace tarvik::repair_rules {
namespace {

const RuleTable& rules()
{
    static const RuleTable table = read_rules(built_in_rules());
    return table;
}

/// The codes of the rules that fire, in order.
std::vector<std::string> codes(const Chain& chain, const Text& model, const Text& repairs)
{
    std::vector<std::string> result;
    run_chain(chain, model, repairs, [&](const Rule& rule) {
        if (!rule.code.empty()) result.push_back(to_utf8(rule.code));
    });
    return result;
}

/// A line after its records: columns 5 to 12, "·" between them.
std::string columns(const SheetLine& line)
{
    Text text = line.text(faults_column);
    for (int column = repairs_column; column <= total_column; ++column) text += U"·" + line.text(column);
    return to_utf8(text);
}

std::string entered(const Text& model, const std::vector<RepairRecord>& records)
{
    SheetLine line(model);
    for (const RepairRecord& record : records) enter_record(line, record, rules());
    finish_line(line, rules());
    return columns(line);
}

/// Each rule of the shipped table has models and repairs that only it knows; but two fire behind a more general one.
TEST(Rules, each_fires_alone_on_its_own_texts)
{
    for (const Chain* chain : {&rules().update, &rules().first_entry}) {
        int with_another = 0;
        for (const Rule& rule : chain->rules) {
            if (rule.code.empty()) continue;
            Text model;
            for (const Condition* condition : {&chain->groups[rule.group], &rule.model})
                for (const Text& piece : condition->all_of) model += piece;
            const auto fired = codes(*chain, model, rule.repair_word);
            ASSERT_FALSE(fired.empty()) << to_utf8(model) << " / " << to_utf8(rule.repair_word);
            EXPECT_EQ(fired.back(), to_utf8(rule.code)) << to_utf8(model) << " / " << to_utf8(rule.repair_word);
            if (fired.size() > 1) ++with_another;
        }
        EXPECT_EQ(with_another, 2) << "the fans of the models with an 8, and -220 with -F2";
    }
}

TEST(Rules, first_entry_keeps_the_last_part_and_an_update_adds_all)
{
    const RepairRecord fan{U"风扇停转", U"换风扇", U"100"};
    const RepairRecord two{U"不通", U"换电源，换主板", U"7"};
    // Both fan rules fire: the later one decides, and in the update both count.
    EXPECT_EQ(entered(U"交换机 电信级以太网交换机ME-8", {fan}), "|风扇停转·|换风扇·|30007309·3·100·45·15·224.64");
    EXPECT_EQ(entered(U"交换机 电信级以太网交换机ME-8", {fan, fan}),
              "|风扇停转|风扇停转·|换风扇|换风扇·|30007309|30007309|30007309·10·100·45·15·224.64");
    EXPECT_EQ(entered(U"交换机-S2024MF-B-220", {two}), "|不通·|换电源，换主板·|20000475·1·7·45·12·89.86");
    EXPECT_EQ(entered(U"交换机-S2024MF-B-220", {two, two}),
              "|不通|不通·|换电源，换主板|换电源，换主板·|20000475|20000475|30003420·3·7·45·12·89.86");
    // A line filled by hand is an update from its first record on, and an update knows no family's charges.
    SheetLine line(U"收发器-48");
    line.set(repairs_column, U"旧");
    enter_record(line, two, rules());
    finish_line(line, rules());
    EXPECT_EQ(columns(line), "|不通·旧|换电源，换主板·|30003418·1····");
}

TEST(Rules, charges_come_from_the_family_the_card_and_the_line_rules)
{
    const RepairRecord nothing{U"甲", U"已清洁", U"20.5"};
    const RepairRecord chip{U"甲", U"换以太网转换芯片", U""};
    EXPECT_EQ(entered(U"交换机", {nothing}), "|甲·|已清洁·|·0·20.5·45·12·108.81");
    EXPECT_EQ(entered(U"电信级以太网交换机ME-PAF-AC", {nothing}), "|甲·|已清洁·|·0·20.5·50·20·127.06");
    EXPECT_EQ(entered(U"电信级以太网收发器", {nothing}), "|甲·|已清洁·|·0·20.5·30·7·80.73");
    EXPECT_EQ(entered(U"收发器转换器", {nothing}), "|甲·|已清洁·|·0·20.5·35·10·91.96");
    EXPECT_EQ(entered(U"百兆光口接口卡-FM-H1FE-S", {chip}), "|甲·|换以太网转换芯片·|30000803·1··45·12·80.03");
    // No record at all: the line rules and the total.
    EXPECT_EQ(entered(U"监控", {}), "···0··50·10·84.24");
    EXPECT_EQ(entered(U"路由器", {}), "·······");
    EXPECT_EQ(entered(U"S2226A S2016S", {}), "···0···10·14.04");
    // Scrapped devices cost no first charge, whatever the model; "out of warranty" is told in other words.
    EXPECT_EQ(entered(U"交换机-S3", {{U"超出保修期", U"报废", U"0"}}), "元器件老化·|报废·|·0·0·0·30·42.12");
}

TEST(Rules, the_exclusion_and_the_blank_behind_a_word)
{
    const auto update = [](const Text& model, const Text& word) { return codes(rules().update, model, word).size(); };
    EXPECT_EQ(update(U"收发器OLF2-", U"换以太网转换芯片"), 2U);
    EXPECT_EQ(codes(rules().update, U"收发器5B-OLF2-", U"换以太网转换芯片"), std::vector<std::string>{"30000905"});
    EXPECT_EQ(update(U"交换机MF-B", U"换数据缓存芯片"), 1U);
    EXPECT_TRUE(codes(rules().first_entry, U"交换机MF-B", U"换数据缓存芯片").empty());
    EXPECT_EQ(codes(rules().first_entry, U"交换机MF-B", U"换数据缓存芯片 x").size(), 1U);
}

TEST(Rules, a_text_in_place_of_a_number_is_left_and_makes_no_total)
{
    SheetLine line(U"监控");
    line.set(record_charge_column, U"面议");
    line.set(quantity_column, U"两只");
    line.set(faults_column, U"旧");
    enter_record(line, {U"甲", U"换cpu", U"1"}, rules());
    finish_line(line, rules());
    EXPECT_EQ(columns(line), "旧|甲·|换cpu··两只·面议·50·10·");
}

} // namespace
} // namespace tarvik::repair_rules

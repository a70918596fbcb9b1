#include "repair_rules/rule_engine.h"
#include "repair_rules/rules.h"
#include "tests/repair_rules/random_lines.h"

#include <gtest/gtest.h>

namespace tarvik::repair_rules {
namespace {

using test::PlainHit;

std::vector<PlainHit> hits(const Chain& chain, const Text& model, const Text& repairs)
{
    std::vector<PlainHit> result;
    run_chain(chain, model, repairs, [&](const Rule& rule) {
        if (!rule.code.empty()) result.push_back({Text(rule.code), rule.quantity});
    });
    return result;
}

Text joined(const Condition& group, const Condition& model)
{
    Text text;
    for (const Condition* condition : {&group, &model})
        for (const auto piece : condition->all_of) text += piece;
    return text;
}

std::size_t part_rules(const Chain& chain)
{
    return static_cast<std::size_t>(
        std::count_if(chain.rules.begin(), chain.rules.end(), [](const Rule& rule) { return !rule.code.empty(); }));
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
    for (const RepairRecord& record : records) enter_record(line, record);
    finish_line(line);
    return columns(line);
}

TEST(Rules, each_fires_alone_on_its_own_texts)
{
    const struct {
        Chain chain;
        std::vector<PlainHit> (*plain)(const Text&, const Text&);
        std::size_t count;
    } chains[] = {{update_chain(), test::plain_update_hits, 78}, {first_entry_chain(), test::plain_first_hits, 80}};
    for (const auto& [chain, plain, count] : chains) {
        EXPECT_EQ(part_rules(chain), count);
        std::vector<std::string> with_another;
        for (const Rule& rule : chain.rules) {
            if (rule.code.empty()) continue;
            const Text model = joined(chain.groups[rule.group], rule.model);
            const Text word(rule.repair_word);
            const auto fired = hits(chain, model, word);
            EXPECT_EQ(fired, plain(model, word)) << to_utf8(model) << " / " << to_utf8(word);
            ASSERT_FALSE(fired.empty()) << to_utf8(model) << " / " << to_utf8(word);
            EXPECT_EQ(fired.back(), (PlainHit{Text(rule.code), rule.quantity}));
            if (fired.size() > 1) with_another.push_back(to_utf8(model + U"/" + word));
            // A letter less in the model or in the word, and it is silent.
            for (const Text& less : {model.substr(1), model.substr(0, model.size() - 1)})
                EXPECT_EQ(hits(chain, less, word), plain(less, word));
            EXPECT_EQ(hits(chain, model, word.substr(1)), plain(model, word.substr(1)));
        }
        EXPECT_EQ(with_another.size(), 2U); // the fans of the models with an 8, and -220 with -F2
    }
}

TEST(Rules, random_texts_fire_what_the_plain_chain_fires)
{
    test::RandomLines random(13);
    std::size_t fired = 0;
    for (int round = 0; round < 20000; ++round) {
        const Text model = random.model();
        const Text repairs = random.repairs();
        const auto first = test::plain_first_hits(model, U"|" + repairs);
        ASSERT_EQ(hits(update_chain(), model, repairs), test::plain_update_hits(model, repairs));
        ASSERT_EQ(hits(first_entry_chain(), model, U"|" + repairs), first);
        fired += first.size();
    }
    EXPECT_GT(fired, 2000U);
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
    enter_record(line, two);
    finish_line(line);
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
    EXPECT_EQ(hits(update_chain(), U"收发器OLF2-", U"换以太网转换芯片").size(), 2U);
    EXPECT_EQ(hits(update_chain(), U"收发器5B-OLF2-", U"换以太网转换芯片"), (std::vector<PlainHit>{{U"30000905", 1}}));
    EXPECT_TRUE(hits(first_entry_chain(), U"交换机MF-B", U"换数据缓存芯片").empty());
    EXPECT_EQ(hits(first_entry_chain(), U"交换机MF-B", U"换数据缓存芯片 x").size(), 1U);
    EXPECT_EQ(hits(update_chain(), U"交换机MF-B", U"换数据缓存芯片").size(), 1U);
}

TEST(Rules, a_text_in_place_of_a_number_is_left_and_makes_no_total)
{
    SheetLine line(U"监控");
    line.set(record_charge_column, U"面议");
    line.set(quantity_column, U"两只");
    line.set(faults_column, U"旧");
    enter_record(line, {U"甲", U"换cpu", U"1"});
    finish_line(line);
    EXPECT_EQ(columns(line), "旧|甲·|换cpu··两只·面议·50·10·");
}

} // namespace
} // namespace tarvik::repair_rules

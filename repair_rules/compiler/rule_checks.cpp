#include "repair_rules/compiler/rule_file.h"

#include <algorithm>

namespace tarvik::rule_compiler {

namespace {

void check_count(const Counts& counts, const std::string& what, std::size_t told, std::size_t found)
{
    if (told != found)
        throw Mistake(counts.line,
                      what + "应有 " + std::to_string(told) + " 条，实有 " + std::to_string(found) + " 条");
}

void check_counts(const RuleTable& table)
{
    if (!table.counts) throw Mistake(1, "缺少数目一行");
    const Counts& counts = *table.counts;
    const auto rules = [&](Chain chain, bool charge_entry) {
        return static_cast<std::size_t>(std::count_if(table.rules.begin(), table.rules.end(), [&](const Rule& rule) {
            return rule.chain == chain && rule.code.empty() == charge_entry;
        }));
    };
    check_count(counts, "更新规则", counts.update, rules(Chain::Update, false));
    check_count(counts, "首次规则", counts.first_entry, rules(Chain::FirstEntry, false));
    check_count(counts, "收费", counts.charges, rules(Chain::FirstEntry, true));
    check_count(counts, "行规则", counts.line_rules, table.line_rules.size());
}

bool same_key(const Rule& a, const Rule& b)
{
    return a.group == b.group && a.model == b.model && a.repair_word == b.repair_word;
}

/// Two lines that ask the same must not stand in one chain, and in the two chains they must name the same part.
void check_pair(const Rule& earlier, const Rule& later)
{
    if (!same_key(earlier, later)) return;
    const std::string place = "第 " + std::to_string(earlier.line) + " 行";
    if (earlier.chain == later.chain) throw Mistake(later.line, "与" + place + "重复");
    if (earlier.code.empty() || later.code.empty()) return;
    if (earlier.code != later.code)
        throw Mistake(later.line, "与" + place + "条件相同而编码不同：" + earlier.code + "、" + later.code);
    if (earlier.quantity != later.quantity)
        throw Mistake(later.line, "与" + place + "条件相同而数量不同：" + earlier.quantity + "、" + later.quantity);
}

} // namespace

void check_rules(const RuleTable& table)
{
    for (auto later = table.rules.begin(); later != table.rules.end(); ++later)
        for (auto earlier = table.rules.begin(); earlier != later; ++earlier) check_pair(*earlier, *later);
    check_counts(table);
}

} // namespace tarvik::rule_compiler

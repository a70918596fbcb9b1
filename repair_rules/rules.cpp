#include "repair_rules/rules.h"

#include "repair_rules/rule_fields.h"

#include <algorithm>

namespace tarvik::repair_rules {

namespace {

/// How many of each the table says that it has.
struct Counts {
    std::size_t line;
    int update, first_entry, charges, line_rules;
};

Text part_code(const Fields& fields, std::size_t index)
{
    const TextView code = fields[index];
    bool right = code.size() == 8 && (code[0] == U'2' || code[0] == U'3');
    for (std::size_t i = 0; i < code.size(); ++i) right = right && code[i] >= U'0' && code[i] <= U'9';
    if (!right) fields.refuse(U"编码须是以 2 或 3 开头的八位数字：" + code.str());
    return code.str();
}

/// Records are read in lower case: a capital letter would never be found in them.
Text repair_word(const Fields& fields, std::size_t index)
{
    Text word = quoted_text(fields, index);
    if (lower(word) != word) fields.refuse(U"维修文字里的字母须小写：" + word);
    return word;
}

class TableReader {
public:
    explicit TableReader(TextView text)
    {
        for (std::size_t line = 1; !text.empty(); ++line) {
            const std::size_t end = std::min(text.find(U'\n'), text.size());
            read_line(text.substr(0, end), line);
            text = text.substr(end + 1);
        }
        check_counts();
    }

    RuleTable table() { return std::move(table_); }

private:
    void read_line(TextView content, std::size_t line)
    {
        const Fields fields(content.starts_with(U"#") ? TextView() : content, line);
        const TextView kind = fields[0];
        if (fields.size() == 1 && kind.empty()) return;
        if (kind == U"数目") read_counts(fields);
        else if (kind == U"组") read_group(fields);
        else if (kind == U"更新") read_rule(fields, table_.update);
        else if (kind == U"首次") read_rule(fields, table_.first_entry);
        else if (kind == U"收费") read_charge_entry(fields);
        else if (kind == U"行") read_line_rule(fields);
        else fields.refuse(U"第一栏须是 数目、组、更新、首次、收费、行 之一：" + kind.str());
    }

    void read_counts(const Fields& fields)
    {
        fields.require_size(5, 5);
        if (counts_) fields.refuse(U"数目只能写一行");
        counts_ = Counts{fields.line(), count(fields, 1), count(fields, 2), count(fields, 3), count(fields, 4)};
    }

    void read_group(const Fields& fields)
    {
        fields.require_size(4, 4);
        if (std::ranges::find(group_names_, fields[1].str()) != group_names_.end())
            fields.refuse(U"这个组已经有了：" + fields[1].str());
        group_names_.push_back(fields[1].str());
        table_.update.groups.push_back(condition(fields, 2));
        table_.first_entry.groups.push_back(condition(fields, 3));
    }

    std::size_t group(const Fields& fields) const
    {
        const auto found = std::ranges::find(group_names_, fields[1].str());
        if (found == group_names_.end()) fields.refuse(U"没有这个组：" + fields[1].str());
        return static_cast<std::size_t>(found - group_names_.begin());
    }

    void read_rule(const Fields& fields, Chain& chain)
    {
        fields.require_size(6, 7);
        Rule rule{.line = fields.line(),
                  .group = group(fields),
                  .model = condition(fields, 2),
                  .repair_word = repair_word(fields, 3),
                  .code = part_code(fields, 4),
                  .quantity = static_cast<double>(count(fields, 5)),
                  .charges = {}};
        if (fields.size() == 7) rule.charges = charges(fields, 6);
        add(std::move(rule), chain);
    }

    void read_charge_entry(const Fields& fields)
    {
        fields.require_size(4, 4);
        add({fields.line(), group(fields), condition(fields, 2), {}, {}, 0, charges(fields, 3)}, table_.first_entry);
    }

    void read_line_rule(const Fields& fields)
    {
        fields.require_size(4, 4);
        const int column = count(fields, 1);
        if (column != 2 && column != 5 && column != 6) fields.refuse(U"行规则只能看第 2、5、6 列");
        table_.line_rules.push_back({column, alternatives(fields, 2), settings(fields, 3)});
    }

    /// Two lines that ask the same must not stand in one chain, and in the two chains they must name the same part.
    void add(Rule rule, Chain& chain)
    {
        for (const Chain* other : {&table_.update, &table_.first_entry})
            for (const Rule& earlier : other->rules) check_pair(earlier, rule, other == &chain);
        chain.rules.push_back(std::move(rule));
    }

    static void check_pair(const Rule& earlier, const Rule& later, bool same_chain)
    {
        if (earlier.group != later.group || earlier.repair_word != later.repair_word || earlier.model != later.model)
            return;
        const Text place = U"与第 " + number_text(earlier.line) + U" 行";
        if (same_chain) refuse_line(later.line, place + U"重复");
        if (earlier.code.empty() || later.code.empty()) return;
        if (earlier.code != later.code)
            refuse_line(later.line, place + U"条件相同而编码不同：" + earlier.code + U"、" + later.code);
        if (earlier.quantity != later.quantity)
            refuse_line(later.line, place + U"条件相同而数量不同：" + number_text(earlier.quantity) + U"、" +
                                        number_text(later.quantity));
    }

    void check_count(TextView what, int stated, std::ptrdiff_t found) const
    {
        if (stated != found)
            refuse_line(counts_->line,
                        what.str() + U"应有 " + number_text(stated) + U" 条，实有 " + number_text(found) + U" 条");
    }

    void check_counts() const
    {
        if (!counts_) refuse_line(1, U"缺少数目一行");
        const auto& first = table_.first_entry.rules;
        const auto charges = std::ranges::count_if(first, [](const Rule& rule) { return rule.code.empty(); });
        check_count(U"更新规则", counts_->update, std::ssize(table_.update.rules));
        check_count(U"首次规则", counts_->first_entry, std::ssize(first) - charges);
        check_count(U"收费", counts_->charges, charges);
        check_count(U"行规则", counts_->line_rules, std::ssize(table_.line_rules));
    }

    RuleTable table_{
        .update = {.groups = {{}}, .rules = {}}, .first_entry = {.groups = {{}}, .rules = {}}, .line_rules = {}};
    std::vector<Text> group_names_{U"-"}; ///< the first asks for nothing
    std::optional<Counts> counts_;
};

} // namespace

bool Condition::holds(TextView text) const
{
    const auto held = [&](const Text& wanted) { return text.contains(wanted); };
    return std::ranges::all_of(all_of, held) && (none_of.empty() || !held(none_of));
}

RuleTable read_rules(TextView text)
{
    return TableReader(text).table();
}

} // namespace tarvik::repair_rules

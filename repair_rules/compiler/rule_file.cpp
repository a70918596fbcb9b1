#include "repair_rules/compiler/rule_file.h"

#include "repair_rules/compiler/fields.h"

#include <algorithm>
#include <cctype>

namespace tarvik::rule_compiler {

namespace {

std::size_t group_index(const RuleTable& table, const Fields& fields, std::size_t index)
{
    const auto found = std::find_if(table.groups.begin(), table.groups.end(),
                                    [&](const Group& group) { return group.name == fields[index]; });
    if (found == table.groups.end()) fields.refuse("没有这个组：" + std::string(fields[index]));
    return static_cast<std::size_t>(found - table.groups.begin());
}

void add_counts(RuleTable& table, const Fields& fields)
{
    fields.require_size(5, 5);
    if (table.counts) fields.refuse("数目只能写一行");
    table.counts = Counts{fields.line(), count(fields, 1), count(fields, 2), count(fields, 3), count(fields, 4)};
}

void add_group(RuleTable& table, const Fields& fields)
{
    fields.require_size(4, 4);
    for (const Group& group : table.groups)
        if (group.name == fields[1]) fields.refuse("这个组已经有了：" + group.name);
    table.groups.push_back({std::string(fields[1]), condition(fields, 2), condition(fields, 3)});
}

std::string part_code(const Fields& fields, std::size_t index)
{
    std::string code(fields[index]);
    if (code.size() != 8 || code.find_first_not_of("0123456789") != code.npos || (code[0] != '2' && code[0] != '3'))
        fields.refuse("编码须是以 2 或 3 开头的八位数字：" + code);
    return code;
}

/// Records are read in lower case: a capital letter would never be found in them.
std::string repair_word(const Fields& fields, std::size_t index)
{
    std::string word = quoted_text(fields, index);
    if (std::any_of(word.begin(), word.end(), [](unsigned char c) { return std::isupper(c) != 0; }))
        fields.refuse("维修文字里的字母须小写：" + word);
    return word;
}

void add_rule(RuleTable& table, const Fields& fields, Chain chain)
{
    fields.require_size(6, 7);
    Rule rule{fields.line(),
              chain,
              group_index(table, fields, 1),
              condition(fields, 2),
              repair_word(fields, 3),
              part_code(fields, 4),
              std::to_string(count(fields, 5)),
              {}};
    if (fields.size() == 7) rule.charges = charges(fields, 6);
    table.rules.push_back(std::move(rule));
}

void add_charge_entry(RuleTable& table, const Fields& fields)
{
    fields.require_size(4, 4);
    table.rules.push_back({fields.line(), Chain::FirstEntry, group_index(table, fields, 1), condition(fields, 2), "",
                           "", "0", charges(fields, 3)});
}

void add_line_rule(RuleTable& table, const Fields& fields)
{
    fields.require_size(4, 4);
    const auto column = count(fields, 1);
    if (column != 2 && column != 5 && column != 6) fields.refuse("行规则只能看第 2、5、6 列");
    table.line_rules.push_back({static_cast<int>(column), alternatives(fields, 2), settings(fields, 3)});
}

void add_line(RuleTable& table, const Fields& fields)
{
    const auto kind = fields[0];
    if (kind == "数目") add_counts(table, fields);
    else if (kind == "组") add_group(table, fields);
    else if (kind == "更新") add_rule(table, fields, Chain::Update);
    else if (kind == "首次") add_rule(table, fields, Chain::FirstEntry);
    else if (kind == "收费") add_charge_entry(table, fields);
    else if (kind == "行") add_line_rule(table, fields);
    else fields.refuse("第一栏须是 数目、组、更新、首次、收费、行 之一（本表须存为 UTF-8）：" + std::string(kind));
}

} // namespace

RuleTable read_rules(std::string_view text)
{
    constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";
    if (text.starts_with(byte_order_mark)) text.remove_prefix(byte_order_mark.size());
    RuleTable table;
    for (std::size_t line = 1; !text.empty(); ++line) {
        const auto end = std::min(text.find('\n'), text.size());
        const auto content = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (content.find_first_not_of(" \t\r") == content.npos || content.starts_with('#')) continue;
        add_line(table, Fields(content, line));
    }
    check_rules(table);
    return table;
}

} // namespace tarvik::rule_compiler

#include "repair_rules/compiler/rule_file.h"

namespace tarvik::rule_compiler {

namespace {

/// As the source of a UTF-32 text.
std::string literal(std::string_view text)
{
    std::string result = "U\"";
    for (const char c : text) {
        if (c == '\\') result += '\\';
        result += c;
    }
    return result + '"';
}

std::string literals(const std::vector<std::string>& texts)
{
    std::string result = "{";
    for (const std::string& text : texts) result += literal(text) + ", ";
    return result + "}";
}

std::string condition_source(const Condition& condition)
{
    return "{" + literals(condition.all_of) + ", " + literal(condition.none_of) + "}";
}

std::string charges_source(const std::optional<Charges>& charges)
{
    if (!charges) return "std::nullopt";
    return std::string("Charges{") + (charges->of_record ? "true" : "false") + ", " + charges->first + ", " +
           charges->second + "}";
}

std::string chain_source(const RuleTable& table, Chain chain, const std::string& name)
{
    std::string groups = "constexpr Condition " + name + "_groups[] = {\n";
    for (const Group& group : table.groups)
        groups += "    " + condition_source(chain == Chain::Update ? group.update : group.first_entry) + ",\n";
    std::string rules = "constexpr Rule " + name + "_rules[] = {\n";
    for (const Rule& rule : table.rules)
        if (rule.chain == chain)
            rules += "    {" + std::to_string(rule.group) + ", " + condition_source(rule.model) + ", " +
                     literal(rule.repair_word) + ", " + literal(rule.code) + ", " + rule.quantity + ", " +
                     charges_source(rule.charges) + "},\n";
    return groups + "};\n\n" + rules + "};\n\n";
}

std::string setting_source(const Setting& setting)
{
    const bool is_text = setting.value.front() == '"';
    const std::string text = is_text ? setting.value.substr(1, setting.value.size() - 2) : "";
    return "{" + std::to_string(setting.column) + ", " + (is_text ? "0" : setting.value) + ", " + literal(text) + "}";
}

std::string line_rules_source(const RuleTable& table)
{
    std::string result = "constexpr LineRule rules_of_lines[] = {\n";
    for (const LineRule& rule : table.line_rules) {
        result += "    {" + std::to_string(rule.column) + ", " + literals(rule.any_of) + ", {{";
        for (const Setting& setting : rule.settings) result += setting_source(setting) + ", ";
        result += "}}},\n";
    }
    return result + "};\n\n";
}

} // namespace

std::string rule_source(const RuleTable& table)
{
    return "// Made from the rule table when the program is built: changes belong there.\n"
           "#include \"repair_rules/rules.h\"\n\n"
           "namespace tarvik::repair_rules {\n\nnamespace {\n\n" +
           chain_source(table, Chain::Update, "update") + chain_source(table, Chain::FirstEntry, "first_entry") +
           line_rules_source(table) +
           "} // namespace\n\n"
           "Chain update_chain()\n{\n    return {update_groups, update_rules};\n}\n\n"
           "Chain first_entry_chain()\n{\n    return {first_entry_groups, first_entry_rules};\n}\n\n"
           "std::span<const LineRule> line_rules()\n{\n    return rules_of_lines;\n}\n\n"
           "} // namespace tarvik::repair_rules\n";
}

} // namespace tarvik::rule_compiler

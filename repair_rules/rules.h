#pragma once

#include "engines/automation.h"

#include <optional>
#include <vector>

/// The department's rules: which parts and charges belong to a repair text and a model text.
namespace tarvik::repair_rules {

/// What a text must hold; an empty condition always holds.
struct Condition {
    std::vector<Text> all_of;
    Text none_of;

    bool holds(TextView text) const;
    friend bool operator==(const Condition&, const Condition&) = default;
};

/// The charges that a rule sets beside the record's own.
struct Charges {
    bool of_record; ///< whether the record's charge is taken too
    double first, second;
};

/// A rule, or with neither repair word nor code an entry that sets charges alone.
struct Rule {
    std::size_t line;  ///< of the table
    std::size_t group; ///< index of the condition that all rules of its group share
    Condition model;
    Text repair_word;
    Text code;
    double quantity;
    std::optional<Charges> charges;
};

/// Rules in the order in which they are tested. None stops the others.
struct Chain {
    std::vector<Condition> groups;
    std::vector<Rule> rules;
};

/// A value for a column of the line.
struct Setting {
    int column;
    CellValue value;
};

/// Tested once for each line of a sheet.
struct LineRule {
    int column;
    std::vector<Text> any_of;
    std::vector<Setting> settings;
};

struct RuleTable {
    Chain update;      ///< for a line that holds fault or repair texts already
    Chain first_entry; ///< for a line that holds none yet
    std::vector<LineRule> line_rules;
};

/// Reads a rule table, as its own comments explain it. Throws Failure with line and reason for a line that does not
/// read, for counts that differ from those the table states, for a rule that stands in a chain twice, and for one that
/// has another code or quantity in the other chain.
RuleTable read_rules(TextView text);
/// The text of the table that the program was built with.
Text built_in_rules();

/// Calls `fire` for each rule of the chain whose tests hold, in order.
template <typename Fire>
void run_chain(const Chain& chain, TextView model, TextView repairs, Fire&& fire)
{
    std::size_t group = chain.groups.size();
    bool in_group = false;
    for (const Rule& rule : chain.rules) {
        if (rule.group != group) {
            group = rule.group;
            in_group = chain.groups[group].holds(model);
        }
        if (in_group && repairs.contains(rule.repair_word) && rule.model.holds(model)) fire(rule);
    }
}

} // namespace tarvik::repair_rules

#pragma once

#include "platform/text/text.h"

#include <array>
#include <optional>
#include <span>

/// The department's rules, built in from rules.txt: which parts and charges belong to a repair text and a model text.
namespace tarvik::repair_rules {

inline constexpr std::size_t most_texts = 4;

/// Texts up to the first empty one.
using Texts = std::array<std::u32string_view, most_texts>;

/// What a text must hold; an empty condition always holds.
struct Condition {
    Texts all_of;
    std::u32string_view none_of;

    bool holds(TextView text) const;
};

/// The charges that a rule sets beside the record's own.
struct Charges {
    bool of_record; ///< whether the record's charge is taken too
    double first, second;
};

/// A rule, or with neither repair word nor code an entry that sets charges alone.
struct Rule {
    std::size_t group; ///< index of the condition that all rules of its group share
    Condition model;
    std::u32string_view repair_word;
    std::u32string_view code;
    double quantity;
    std::optional<Charges> charges;
};

/// Rules in the order in which they are tested. None stops the others.
struct Chain {
    std::span<const Condition> groups;
    std::span<const Rule> rules;
};

/// A number, or the text where there is one. No column: nothing.
struct Setting {
    int column;
    double number;
    std::u32string_view text;
};

/// Tested once for each line of a sheet.
struct LineRule {
    int column;
    Texts any_of;
    std::array<Setting, most_texts> settings;
};

/// For a line that holds fault or repair texts already.
Chain update_chain();
/// For a line that holds none yet.
Chain first_entry_chain();
std::span<const LineRule> line_rules();

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

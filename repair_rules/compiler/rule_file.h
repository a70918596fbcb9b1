#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

/// Reads the department's rule table, checks it and writes it as the source that the program is built from. Texts are
/// UTF-8 throughout.
namespace tarvik::rule_compiler {

/// What is wrong with the table; `line` counts from 1.
struct Mistake : std::runtime_error {
    Mistake(std::size_t line_, const std::string& reason) : std::runtime_error(reason), line(line_) {}
    std::size_t line;
};

/// How many texts a condition may have.
inline constexpr std::size_t most_texts = 4;

struct Condition {
    std::vector<std::string> all_of;
    std::string none_of;

    friend bool operator==(const Condition&, const Condition&) = default;
};

/// A name for rules that ask the same of the model; each chain has its own way to ask.
struct Group {
    std::string name;
    Condition update, first_entry;
};

/// Amounts stay as they are written.
struct Charges {
    bool of_record;
    std::string first, second;
};

enum class Chain { Update, FirstEntry };

/// A rule, or with neither repair word nor code an entry that sets charges alone.
struct Rule {
    std::size_t line;
    Chain chain;
    std::size_t group; ///< index
    Condition model;
    std::string repair_word, code;
    std::string quantity;
    std::optional<Charges> charges;
};

/// A number, or a text with its quotes.
struct Setting {
    int column;
    std::string value;
};

struct LineRule {
    int column;
    std::vector<std::string> any_of;
    std::vector<Setting> settings;
};

/// How many of each the table says that it has.
struct Counts {
    std::size_t line, update, first_entry, charges, line_rules;
};

struct RuleTable {
    std::vector<Group> groups{{"-", {}, {}}}; ///< the first asks for nothing
    std::vector<Rule> rules;                  ///< of both chains, in the order of the file
    std::vector<LineRule> line_rules;
    std::optional<Counts> counts;
};

/// Throws Mistake for a line that does not read, and for a table that check_rules() refuses.
RuleTable read_rules(std::string_view text);

/// What no single line shows: the counts, a key told twice, a key with another code in the other chain.
void check_rules(const RuleTable& table);

/// The C++ source of the tables.
std::string rule_source(const RuleTable& table);

} // namespace tarvik::rule_compiler

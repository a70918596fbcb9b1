#pragma once

#include "repair_rules/compiler/rule_file.h"

/// The fields of a line of the rule table.
namespace tarvik::rule_compiler {

/// A line cut at each | outside of quotes; the fields have no blanks around them. Fields count from 0.
class Fields {
public:
    Fields(std::string_view text, std::size_t line);

    std::size_t line() const { return line_; }
    std::size_t size() const { return fields_.size(); }
    std::string_view operator[](std::size_t index) const { return fields_[index]; }
    [[noreturn]] void refuse(const std::string& reason) const { throw Mistake(line_, reason); }
    /// Refuses a line with fewer or more fields.
    void require_size(std::size_t least, std::size_t most) const;

private:
    std::size_t line_;
    std::vector<std::string_view> fields_;
};

/// "-", or texts joined by 且 or 且无.
Condition condition(const Fields& fields, std::size_t index);
/// Texts joined by 或.
std::vector<std::string> alternatives(const Fields& fields, std::size_t index);
/// One text.
std::string quoted_text(const Fields& fields, std::size_t index);
/// Digits, of them one part behind a point at most.
bool is_amount(std::string_view text);
/// A whole number above 0.
std::size_t count(const Fields& fields, std::size_t index);
Charges charges(const Fields& fields, std::size_t index);
/// `column=number` or `column="text"`, with blanks between several.
std::vector<Setting> settings(const Fields& fields, std::size_t index);

} // namespace tarvik::rule_compiler

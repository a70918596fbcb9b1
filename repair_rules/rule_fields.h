#pragma once

#include "repair_rules/rules.h"

/// The fields of a line of the rule table.
namespace tarvik::repair_rules {

/// A line cut at each | outside of quotes; the fields have no blanks around them. Fields count from 0.
class Fields {
public:
    Fields(TextView text, std::size_t line);

    std::size_t line() const { return line_; }
    std::size_t size() const { return fields_.size(); }
    TextView operator[](std::size_t index) const { return fields_[index]; }
    /// Throws Failure with the number of the line.
    [[noreturn]] void refuse(const Text& reason) const;
    /// Refuses a line with fewer or more fields.
    void require_size(std::size_t least, std::size_t most) const;

private:
    std::size_t line_;
    std::vector<TextView> fields_;
};

/// Throws Failure that names the line of the table, counting from 1.
[[noreturn]] void refuse_line(std::size_t line, const Text& reason);

/// "-", or texts joined by 且 or 且无.
Condition condition(const Fields& fields, std::size_t index);
/// Texts joined by 或.
std::vector<Text> alternatives(const Fields& fields, std::size_t index);
/// One text.
Text quoted_text(const Fields& fields, std::size_t index);
/// A whole number above 0.
int count(const Fields& fields, std::size_t index);
Charges charges(const Fields& fields, std::size_t index);
/// `column=number` or `column="text"`, with blanks between several.
std::vector<Setting> settings(const Fields& fields, std::size_t index);

} // namespace tarvik::repair_rules

#pragma once

#include "engines/spreadsheets/calculation/formula.h"

#include <string_view>

namespace tarvik::calculation {

/// Whether "*", "?" or "~" give a text a meaning beyond itself.
bool has_wildcards(std::u32string_view text) noexcept;
/// The text, to its end or its beginning alone, against a pattern: "*" is any characters, "?" one; "~" takes their
/// meaning away. Without case.
bool matches_pattern(std::u32string_view pattern, std::u32string_view text, bool to_end = true) noexcept;
/// The first place of the pattern in the text from `from` on, counting from 0, or npos.
std::size_t find_pattern(std::u32string_view pattern, std::u32string_view text, std::size_t from) noexcept;

/// The comparison that the text begins with, taken off it; nothing when it begins with none.
std::optional<Operator> take_comparison(TextView& text) noexcept;

/// What COUNTIF and its kin ask of a cell: a value, or a text with an operator before it (">=5", "<>x*").
class Criterion {
public:
    Criterion(const Value& written, bool counts_from_1904);

    bool holds(const Value& value) const;
    /// The value that a cell must be equal to, when that is all: it can be looked up.
    const Value* key() const noexcept { return is_key_ ? &operand_ : nullptr; }

private:
    bool is_equal_to(const Value& value) const;

    Operator how_ = Operator::Equal;
    Value operand_; // nothing for an absent cell
    bool takes_empty_text_ = false;
    bool is_pattern_ = false;
    bool is_key_ = false;
    bool counts_from_1904_;
};

} // namespace tarvik::calculation

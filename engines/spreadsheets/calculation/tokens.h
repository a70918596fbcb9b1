#pragma once

#include "engines/spreadsheets/calculation/tree.h"

#include <optional>
#include <string>
#include <string_view>

namespace tarvik::calculation {

enum class TokenKind {
    End,
    Number,
    Text,     ///< with its quotes, which are doubled inside
    Error,    ///< "#REF!"
    Sheet,    ///< what stands before "!", the "!" not among it: a sheet, two with ":" between, each with a workbook in
              ///< brackets before it; quoted or not
    Cell,     ///< "$B12"
    Lines,    ///< whole columns or rows: "A:$C", "1:3"
    Function, ///< a name before "(", which is a token of its own
    Table,    ///< a table's name, if any, and its brackets
    Name,
    Operator, ///< also parentheses, braces, "," and ";"
    Bad,
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::string_view text; ///< of the formula
    bool is_after_blank = false;
};

/// Takes a formula apart, which it does not keep. Every formula ends in End; Bad is one character that means nothing.
class Tokens {
public:
    explicit Tokens(std::string_view formula) : rest_(formula) {}
    Token next();

private:
    Token take(TokenKind kind, std::size_t size);
    Token take_word();
    std::size_t sheet_length(std::size_t from) const noexcept;
    std::size_t lines_length() const noexcept;

    std::string_view rest_;
};

/// One corner of a reference: a column, a row or both, each with or without "$".
struct Corner {
    std::optional<int> column;
    std::optional<int> row;
    bool is_column_fixed = false;
    bool is_row_fixed = false;
};

std::optional<Corner> parse_corner(std::string_view word) noexcept;

// Nodes without children, made of one token each.

Node uncalculable(std::string reason);
Node number_leaf(std::string_view digits);
/// Of a cell, or of whole columns or rows, as the formula at `at` means it. The sheets in lower case, or empty.
Node area_leaf(std::string_view text, const Text& first_sheet, const Text& last_sheet, Place at);
/// Of a table's name, if any, and its brackets.
Node table_leaf(std::string_view text);

/// What stands between the quotes, each doubled one once.
std::string undoubled(std::string_view quoted);
std::string in_capitals(std::string_view name);

} // namespace tarvik::calculation

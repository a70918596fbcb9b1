#pragma once

#include "engines/spreadsheets/calculation/formula.h"

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
    Name,     ///< from Sheet on all may begin a reference
    Operator, ///< also parentheses, braces, "," and ";"
    Bad,
};

struct Token {
    TokenKind kind = TokenKind::End;
    std::string_view text; ///< of the formula
    bool is_after_blank = false;
    Corner first{}, last{}; ///< of a cell, which is both, or of lines
    double number = 0;      ///< infinite where it is too large
};

/// Takes a formula apart, which it does not keep. Every formula ends in End; Bad is one character that means nothing.
class Tokens {
public:
    explicit Tokens(std::string_view formula) : rest_(formula) {}
    Token next();

private:
    Token take(TokenKind kind, std::size_t size, const Corner& first = {}, const Corner& last = {});
    Token take_word();
    std::size_t sheet_length(std::size_t from) const noexcept;

    std::string_view rest_;
};

/// The reference that a table's name, if any, and its brackets mean.
Node table_leaf(std::string_view text);

/// What stands between the quotes, each doubled one once.
std::string undoubled(std::string_view quoted);
std::string in_capitals(std::string_view name);

} // namespace tarvik::calculation

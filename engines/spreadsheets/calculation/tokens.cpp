#include "engines/spreadsheets/calculation/tokens.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tarvik::calculation {

namespace {

constexpr std::array<std::string_view, 11> errors{"#NULL!", "#DIV/0!", "#VALUE!",       "#REF!",  "#NAME?", "#NUM!",
                                                  "#N/A",   "#SPILL!", "#GETTING_DATA", "#CALC!", "#FIELD!"};
constexpr std::string_view blanks = " \t\r\n";

bool is_word(char c) noexcept
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || is_digit(c) || c == '$' || c == '_' || c == '.' ||
           c == '\\' || c == '?' || static_cast<unsigned char>(c) >= 0x80;
}

std::size_t word_length(std::string_view text, std::size_t from) noexcept
{
    std::size_t end = from;
    while (end < text.size() && is_word(text[end])) ++end;
    return end - from;
}

// A doubled quote inside stands for one; 0 when the quote is never closed.
std::size_t quoted_length(std::string_view text) noexcept
{
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] != text.front()) continue;
        if (i + 1 == text.size() || text[i + 1] != text.front()) return i + 1;
        ++i;
    }
    return 0;
}

// "'" takes the next character's meaning away; 0 when they are never closed.
std::size_t brackets_length(std::string_view text, std::size_t from) noexcept
{
    int depth = 0;
    for (std::size_t i = from; i < text.size(); ++i) {
        if (text[i] == '\'') {
            ++i;
        } else if (text[i] == '[') {
            ++depth;
        } else if (text[i] == ']' && --depth == 0) {
            return i + 1 - from;
        }
    }
    return 0;
}

std::optional<Corner> parse_corner(std::string_view word) noexcept
{
    Corner corner;
    const auto take_dollar = [&word] {
        const bool is_there = word.starts_with('$');
        if (is_there) word.remove_prefix(1);
        return is_there;
    };
    corner.is_column_fixed = take_dollar();
    const auto digits = std::min(word.find_first_of("$0123456789"), word.size());
    corner.column = ooxml::parse_column(word.substr(0, digits));
    if (digits > 0 && !corner.column) return std::nullopt;
    word.remove_prefix(digits);
    if (corner.column) {
        corner.is_row_fixed = take_dollar();
        if (word.empty()) return corner.is_row_fixed ? std::nullopt : std::optional(corner);
    } else {
        corner.is_row_fixed = corner.is_column_fixed; // "$3": the only "$" is the row's
    }
    corner.row = ooxml::parse_count(word, ooxml::last_row_of_sheet);
    return corner.row ? std::optional(corner) : std::nullopt;
}

// The pieces of what stands between a table's brackets: "[#This Row],[a]:[b]" or a plain column. An escape stays.
std::vector<std::string_view> pieces_of(std::string_view inside)
{
    if (inside.find('[') == std::string_view::npos) return {inside};
    std::vector<std::string_view> pieces;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < inside.size(); ++i) {
        if (inside[i] == '\'') {
            ++i;
        } else if (inside[i] == '[') {
            begin = i + 1;
        } else if (inside[i] == ']') {
            pieces.push_back(inside.substr(begin, i - begin));
        }
    }
    return pieces;
}

} // namespace

Token Tokens::take(TokenKind kind, std::size_t size, const Corner& first, const Corner& last)
{
    const Token token{.kind = kind, .text = rest_.substr(0, size), .first = first, .last = last};
    rest_.remove_prefix(std::min(size, rest_.size()));
    return token;
}

Token Tokens::next()
{
    const auto blank = std::min(rest_.find_first_not_of(blanks), rest_.size());
    rest_.remove_prefix(blank);
    Token token = [this] {
        if (rest_.empty()) return Token{};
        const char c = rest_.front();
        if (c == '"') {
            const auto quoted = quoted_length(rest_);
            return quoted > 0 ? take(TokenKind::Text, quoted) : take(TokenKind::Bad, 1);
        }
        if (c == '#') {
            for (const auto error : errors)
                if (rest_.starts_with(error)) return take(TokenKind::Error, error.size());
        }
        if (is_word(c) || c == '\'' || c == '[') return take_word();
        if (rest_.starts_with("<>") || rest_.starts_with("<=") || rest_.starts_with(">="))
            return take(TokenKind::Operator, 2);
        const bool is_operator = std::string_view("+-*/^&=<>%(),:;{}").find(c) != std::string_view::npos;
        return take(is_operator ? TokenKind::Operator : TokenKind::Bad, 1);
    }();
    token.is_after_blank = blank > 0;
    return token;
}

// The length of sheets' names and the "!" behind them from there; 0 when there are none.
std::size_t Tokens::sheet_length(std::size_t from) const noexcept
{
    std::size_t end = from;
    if (end < rest_.size() && rest_[end] == '\'') {
        const auto quoted = quoted_length(rest_.substr(end));
        return quoted > 0 && rest_.substr(end + quoted).starts_with('!') ? quoted + 1 : 0;
    }
    if (end < rest_.size() && rest_[end] == '[') end += brackets_length(rest_, end);
    end += word_length(rest_, end);
    if (end < rest_.size() && rest_[end] == ':') {
        const auto second = word_length(rest_, end + 1);
        if (second > 0 && rest_.substr(end + 1 + second).starts_with('!')) end += 1 + second;
    }
    return end > from && rest_.substr(end).starts_with('!') ? end + 1 - from : 0;
}

Token Tokens::take_word()
{
    if (const auto sheet = sheet_length(0); sheet > 0) {
        const Token token = take(TokenKind::Sheet, sheet - 1);
        rest_.remove_prefix(1);
        return token;
    }
    const auto word = word_length(rest_, 0);
    const auto corner = parse_corner(rest_.substr(0, word));
    if (corner && !corner->is_cell() && rest_.substr(word).starts_with(':')) {
        const auto second = word_length(rest_, word + 1);
        const auto other = parse_corner(rest_.substr(word + 1, second));
        if (other && !other->is_cell() && corner->row.has_value() == other->row.has_value())
            return take(TokenKind::Lines, word + 1 + second, *corner, *other);
    }
    const char c = rest_.front();
    if (is_digit(c) || (c == '.' && rest_.size() > 1 && is_digit(rest_[1]))) {
        double number = 0;
        const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), number);
        Token token = take(TokenKind::Number, static_cast<std::size_t>(end - rest_.data()));
        const bool is_small = token.text.find("e-") != npos || token.text.find("E-") != npos;
        token.number = error == std::errc() || is_small ? number : HUGE_VAL;
        return token;
    }
    if (word < rest_.size() && rest_[word] == '[') {
        const auto brackets = brackets_length(rest_, word);
        if (brackets == 0) return take(TokenKind::Bad, 1);
        return take(TokenKind::Table, word + brackets);
    }
    if (word == 0) return take(TokenKind::Bad, 1);
    if (word < rest_.size() && rest_[word] == '(') return take(TokenKind::Function, word);
    return corner && corner->is_cell() ? take(TokenKind::Cell, word, *corner, *corner) : take(TokenKind::Name, word);
}

std::string undoubled(std::string_view quoted)
{
    std::string plain;
    for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
        plain += quoted[i];
        if (quoted[i] == quoted.front()) ++i;
    }
    return plain;
}

std::string in_capitals(std::string_view name)
{
    std::string capitals(name);
    std::ranges::transform(capitals, capitals.begin(),
                           [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return capitals;
}

Node table_leaf(std::string_view text)
{
    const auto bracket = text.find('[');
    TableReference reference;
    reference.table = lower(from_utf8(text.substr(0, bracket)));
    for (std::string_view piece : pieces_of(text.substr(bracket + 1, text.size() - bracket - 2))) {
        if (piece.starts_with('@')) {
            reference.this_row = true;
            piece.remove_prefix(1);
        }
        if (piece.empty()) continue;
        const auto special = piece.starts_with('#') ? in_capitals(piece) : std::string();
        if (special.empty()) {
            std::string plain;
            for (std::size_t i = 0; i < piece.size(); ++i) {
                if (piece[i] == '\'' && i + 1 < piece.size()) ++i;
                plain += piece[i];
            }
            (reference.first_column.empty() ? reference.first_column : reference.last_column) = lower(from_utf8(plain));
        } else if (special == "#ALL") {
            reference.headers = reference.data = reference.totals = true;
        } else if (special == "#HEADERS") {
            reference.headers = true;
        } else if (special == "#DATA") {
            reference.data = true;
        } else if (special == "#TOTALS") {
            reference.totals = true;
        } else if (special == "#THIS ROW") {
            reference.this_row = true;
        } else {
            return {Uncalculable{"table reference"}, {}};
        }
    }
    if (reference.last_column.empty()) reference.last_column = reference.first_column;
    if (!reference.headers && !reference.totals && !reference.this_row) reference.data = true;
    return {std::move(reference), {}};
}

} // namespace tarvik::calculation

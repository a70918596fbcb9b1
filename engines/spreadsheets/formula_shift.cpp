#include "engines/spreadsheets/formula_shift.h"

#include "engines/spreadsheets/calculation/places.h"

namespace tarvik::ooxml {

namespace {

bool is_word(char c) noexcept
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '$' || c == '_' ||
           c == '.' || c == '\\' || c == '?' || static_cast<unsigned char>(c) >= 0x80;
}

int wrapped(int number, int by, int limit) noexcept
{
    const int moved = (number - 1 + by) % limit;
    return (moved < 0 ? moved + limit : moved) + 1;
}

// One end of a reference: a column, a row or both, each with or without "$".
struct End {
    std::optional<int> column;
    std::optional<int> row;
    bool is_column_fixed = false;
    bool is_row_fixed = false;
};

std::optional<End> parse_end(std::string_view word) noexcept
{
    End end;
    const auto take_dollar = [&word] {
        const bool is_there = word.starts_with('$');
        if (is_there) word.remove_prefix(1);
        return is_there;
    };
    end.is_column_fixed = take_dollar();
    const auto digits = std::min(word.find_first_of("$0123456789"), word.size());
    end.column = parse_column(word.substr(0, digits));
    if (digits > 0 && !end.column) return std::nullopt;
    word.remove_prefix(digits);
    if (end.column) {
        end.is_row_fixed = take_dollar();
        if (word.empty()) return end.is_row_fixed ? std::nullopt : std::optional(end);
    } else {
        end.is_row_fixed = end.is_column_fixed; // "$3": the only "$" is the row's
    }
    end.row = parse_count(word, last_row_of_sheet);
    return end.row ? std::optional(end) : std::nullopt;
}

class Shifting {
public:
    Shifting(std::string_view formula, int rows, int columns) : rest_(formula), rows_(rows), columns_(columns) {}

    std::string run()
    {
        while (!rest_.empty()) {
            switch (rest_.front()) {
            case '"': copy_quoted('"'); break;
            case '\'': copy_quoted('\''); break;
            case '[': copy_brackets(); break;
            case '#': copy_error(); break;
            default:
                if (is_word(rest_.front())) {
                    take_words();
                } else {
                    copy(1);
                }
            }
        }
        return std::move(shifted_);
    }

private:
    void copy(std::size_t count)
    {
        shifted_ += rest_.substr(0, count);
        rest_.remove_prefix(std::min(count, rest_.size()));
    }

    // A doubled quote inside reads as two quoted pieces side by side, which comes to the same.
    void copy_quoted(char quote)
    {
        const auto end = rest_.find(quote, 1);
        copy(end == std::string_view::npos ? rest_.size() : end + 1);
    }

    // A workbook's number, or a column of a table; "'" takes the next character's meaning away.
    void copy_brackets()
    {
        int depth = 0;
        std::size_t i = 0;
        for (; i < rest_.size(); ++i) {
            if (rest_[i] == '\'') {
                ++i;
            } else if (rest_[i] == '[') {
                ++depth;
            } else if (rest_[i] == ']' && --depth == 0) {
                break;
            }
        }
        copy(i + 1);
    }

    // An error value such as #DIV/0! or #REF!.
    void copy_error()
    {
        std::size_t i = 1;
        while (i < rest_.size() && (is_word(rest_[i]) || rest_[i] == '/')) ++i;
        if (i < rest_.size() && i > 1 && rest_[i] == '!') ++i;
        copy(i);
    }

    std::size_t word_length(std::size_t at) const noexcept
    {
        std::size_t end = at;
        while (end < rest_.size() && is_word(rest_[end])) ++end;
        return end - at;
    }

    // Whether what ends there is the name of a sheet, a function or a table.
    bool is_name_before(std::size_t at) const noexcept
    {
        return at < rest_.size() && (rest_[at] == '!' || rest_[at] == '(' || rest_[at] == '[');
    }

    void take_words()
    {
        const auto first = word_length(0);
        if (is_name_before(first)) return copy(first);
        const auto end = parse_end(rest_.substr(0, first));
        const auto second = first < rest_.size() && rest_[first] == ':' ? word_length(first + 1) : 0;
        if (second > 0 && first + 1 + second < rest_.size() && rest_[first + 1 + second] == '!') {
            return copy(first + 1 + second); // a row of sheets
        }
        if (!end) return copy(first);
        if (end->column && end->row) {
            append(*end);
            rest_.remove_prefix(first);
            return;
        }
        // Whole columns or rows are a reference only when both ends are.
        const auto other = parse_end(rest_.substr(std::min(first + 1, rest_.size()), second));
        if (!other || other->column.has_value() != end->column.has_value() ||
            other->row.has_value() != end->row.has_value()) {
            return copy(first);
        }
        append(*end);
        shifted_ += ':';
        append(*other);
        rest_.remove_prefix(first + 1 + second);
    }

    void append(const End& end)
    {
        if (end.column) {
            if (end.is_column_fixed) shifted_ += '$';
            shifted_ +=
                column_name(end.is_column_fixed ? *end.column : wrapped(*end.column, columns_, last_column_of_sheet));
        }
        if (end.row) {
            if (end.is_row_fixed) shifted_ += '$';
            shifted_ += std::to_string(end.is_row_fixed ? *end.row : wrapped(*end.row, rows_, last_row_of_sheet));
        }
    }

    std::string_view rest_;
    int rows_;
    int columns_;
    std::string shifted_;
};

} // namespace

std::string shifted_formula(std::string_view formula, int rows, int columns)
{
    return Shifting(formula, rows, columns).run();
}

} // namespace tarvik::ooxml

#include "repair_rules/compiler/fields.h"

#include <algorithm>
#include <charconv>

namespace tarvik::rule_compiler {

namespace {

constexpr std::string_view digits = "0123456789";
constexpr std::string_view blanks = " \t\r";
constexpr int last_column = 12, first_column = 5; // the columns of a sheet that rules may write

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(blanks);
    return first == text.npos ? std::string_view() : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// Takes a field apart from its beginning.
class Reader {
public:
    Reader(const Fields& fields, std::size_t index) : fields_(fields), rest_(fields[index]) {}

    bool at_end() const { return rest_.empty(); }

    bool take(std::string_view word)
    {
        if (!rest_.starts_with(word)) return false;
        rest_ = trimmed(rest_.substr(word.size()));
        return true;
    }

    /// Up to the next blank.
    std::string_view word()
    {
        const auto result = rest_.substr(0, rest_.find_first_of(blanks));
        rest_ = trimmed(rest_.substr(result.size()));
        return result;
    }

    /// What stands between two quotes.
    std::string text()
    {
        const auto end = rest_.starts_with('"') ? rest_.find('"', 1) : rest_.npos;
        if (end == rest_.npos || end == 1) refuse("此处须是双引号内的文字：");
        std::string result(rest_.substr(1, end - 1));
        rest_ = trimmed(rest_.substr(end + 1));
        return result;
    }

    [[noreturn]] void refuse(const std::string& reason) const { fields_.refuse(reason + std::string(rest_)); }

private:
    const Fields& fields_;
    std::string_view rest_;
};

} // namespace

Fields::Fields(std::string_view text, std::size_t line) : line_(line)
{
    bool in_quotes = false;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') in_quotes = !in_quotes;
        if (text[i] != '|' || in_quotes) continue;
        fields_.push_back(trimmed(text.substr(begin, i - begin)));
        begin = i + 1;
    }
    fields_.push_back(trimmed(text.substr(begin)));
    if (in_quotes) refuse("双引号没有成对");
}

void Fields::require_size(std::size_t least, std::size_t most) const
{
    if (size() < least || size() > most)
        refuse("这一行须有 " + std::to_string(least) + (least < most ? " 至 " + std::to_string(most) : std::string()) +
               " 栏，实有 " + std::to_string(size()) + " 栏");
}

Condition condition(const Fields& fields, std::size_t index)
{
    Condition result;
    if (fields[index] == "-") return result;
    Reader reader(fields, index);
    result.all_of.push_back(reader.text());
    while (!reader.at_end()) {
        if (reader.take("且无")) {
            if (!result.none_of.empty()) reader.refuse("一个条件里只能有一个“且无”：");
            result.none_of = reader.text();
        } else if (reader.take("且")) {
            result.all_of.push_back(reader.text());
        } else {
            reader.refuse("文字之间须用“且”或“且无”连接：");
        }
    }
    if (result.all_of.size() > most_texts) fields.refuse("一个条件里的文字太多");
    return result;
}

std::vector<std::string> alternatives(const Fields& fields, std::size_t index)
{
    Reader reader(fields, index);
    std::vector<std::string> result{reader.text()};
    while (!reader.at_end()) {
        if (!reader.take("或")) reader.refuse("文字之间须用“或”连接：");
        result.push_back(reader.text());
    }
    if (result.size() > most_texts) fields.refuse("一个条件里的文字太多");
    return result;
}

std::string quoted_text(const Fields& fields, std::size_t index)
{
    Reader reader(fields, index);
    std::string result = reader.text();
    if (!reader.at_end()) reader.refuse("此栏只能有一个文字：");
    return result;
}

bool is_amount(std::string_view text)
{
    const auto point = text.find('.');
    const auto whole = text.substr(0, point);
    const auto part = point == text.npos ? std::string_view("0") : text.substr(point + 1);
    const auto all_digits = [](std::string_view piece) {
        return !piece.empty() && piece.find_first_not_of(digits) == piece.npos;
    };
    return all_digits(whole) && all_digits(part) && (whole == "0" || whole.front() != '0');
}

std::size_t count(const Fields& fields, std::size_t index)
{
    const auto field = fields[index];
    std::size_t value = 0;
    const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), value);
    if (error != std::errc() || end != field.data() + field.size() || value == 0)
        fields.refuse("此处须是大于 0 的整数：" + std::string(field));
    return value;
}

Charges charges(const Fields& fields, std::size_t index)
{
    Reader reader(fields, index);
    const bool of_record = reader.take("记录");
    if (!of_record && !reader.take("不变")) reader.refuse("费用须以“记录”或“不变”开头：");
    Charges result{of_record, std::string(reader.word()), std::string(reader.word())};
    if (!is_amount(result.first) || !is_amount(result.second) || !reader.at_end())
        fields.refuse("“记录”或“不变”之后须是两个费用：" + std::string(fields[index]));
    return result;
}

std::vector<Setting> settings(const Fields& fields, std::size_t index)
{
    std::vector<Setting> result;
    for (Reader reader(fields, index); !reader.at_end();) {
        int column = last_column;
        while (column >= first_column && !reader.take(std::to_string(column) + "=")) --column;
        if (column < first_column) reader.refuse("此处须是“列=数”或“列=\"文字\"”，列为 5 至 12：");
        Reader ahead = reader;
        if (ahead.take("\"")) {
            result.push_back({column, '"' + reader.text() + '"'});
            continue;
        }
        const std::string amount(reader.word());
        if (!is_amount(amount)) fields.refuse("此处须是数：" + amount);
        result.push_back({column, amount});
    }
    if (result.empty() || result.size() > most_texts) fields.refuse("此栏须写入 1 至 4 列");
    return result;
}

} // namespace tarvik::rule_compiler

#include "repair_rules/rule_fields.h"

#include "platform/failure.h"

namespace tarvik::repair_rules {

namespace {

constexpr std::u32string_view blanks = U" \t\r";
constexpr int last_column = 12, first_column = 5; // the columns of a sheet that rules may write
constexpr double most = 1'000'000;                // of anything that is counted

bool is_blank(char32_t character)
{
    return blanks.find(character) != blanks.npos;
}

TextView trimmed(TextView text)
{
    while (!text.empty() && is_blank(text[0])) text = text.substr(1);
    while (!text.empty() && is_blank(text[text.size() - 1])) text = text.substr(0, text.size() - 1);
    return text;
}

/// The number that is written with digits and at most one point.
std::optional<double> amount(TextView text)
{
    for (std::size_t i = 0; i < text.size(); ++i)
        if ((text[i] < U'0' || text[i] > U'9') && text[i] != U'.') return std::nullopt;
    return number(text);
}

/// Takes a field apart from its beginning.
class Reader {
public:
    Reader(const Fields& fields, std::size_t index) : fields_(fields), rest_(fields[index]) {}

    bool at_end() const { return rest_.empty(); }

    bool take(TextView word)
    {
        if (!rest_.starts_with(word)) return false;
        rest_ = trimmed(rest_.substr(word.size()));
        return true;
    }

    /// Up to the next blank.
    TextView word()
    {
        std::size_t end = 0;
        while (end < rest_.size() && !is_blank(rest_[end])) ++end;
        const TextView result = rest_.substr(0, end);
        rest_ = trimmed(rest_.substr(end));
        return result;
    }

    bool at_text() const { return rest_.starts_with(U"\""); }
    /// What stands between two quotes.
    Text text()
    {
        const std::size_t end = at_text() ? rest_.find(U'"', 1) : npos;
        if (end == npos || end == 1) refuse(U"此处须是双引号内的文字：");
        Text result = rest_.substr(1, end - 1).str();
        rest_ = trimmed(rest_.substr(end + 1));
        return result;
    }

    /// A text, or the number up to the next blank.
    CellValue value()
    {
        if (at_text()) return text();
        const TextView digits = word();
        const auto number = amount(digits);
        if (!number) fields_.refuse(U"此处须是数：" + digits.str());
        return *number;
    }

    [[noreturn]] void refuse(TextView reason) const { fields_.refuse(reason.str() + rest_); }

private:
    const Fields& fields_;
    TextView rest_;
};

} // namespace

void refuse_line(std::size_t line, const Text& reason)
{
    throw Failure(U" 请注意：\r\n维修规则表第 " + number_text(line) + U" 行：" + reason +
                  U"。各表没有改动，请改正后再试。");
}

Fields::Fields(TextView text, std::size_t line) : line_(line)
{
    bool in_quotes = false;
    std::size_t begin = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == U'"') in_quotes = !in_quotes;
        if (text[i] != U'|' || in_quotes) continue;
        fields_.push_back(trimmed(text.substr(begin, i - begin)));
        begin = i + 1;
    }
    fields_.push_back(trimmed(text.substr(begin)));
    if (in_quotes) refuse(U"双引号没有成对");
}

void Fields::refuse(const Text& reason) const
{
    refuse_line(line_, reason);
}

void Fields::require_size(std::size_t least, std::size_t most_fields) const
{
    if (size() >= least && size() <= most_fields) return;
    const Text range = least < most_fields ? U" 至 " + number_text(most_fields) : Text();
    refuse(U"这一行须有 " + number_text(least) + range + U" 栏，实有 " + number_text(size()) + U" 栏");
}

Condition condition(const Fields& fields, std::size_t index)
{
    Condition result;
    if (fields[index] == U"-") return result;
    Reader reader(fields, index);
    result.all_of.push_back(reader.text());
    while (!reader.at_end()) {
        if (reader.take(U"且无")) {
            if (!result.none_of.empty()) reader.refuse(U"一个条件里只能有一个“且无”：");
            result.none_of = reader.text();
        } else if (reader.take(U"且")) {
            result.all_of.push_back(reader.text());
        } else {
            reader.refuse(U"文字之间须用“且”或“且无”连接：");
        }
    }
    return result;
}

std::vector<Text> alternatives(const Fields& fields, std::size_t index)
{
    Reader reader(fields, index);
    std::vector<Text> result{reader.text()};
    while (!reader.at_end()) {
        if (!reader.take(U"或")) reader.refuse(U"文字之间须用“或”连接：");
        result.push_back(reader.text());
    }
    return result;
}

Text quoted_text(const Fields& fields, std::size_t index)
{
    Reader reader(fields, index);
    Text result = reader.text();
    if (!reader.at_end()) reader.refuse(U"此栏只能有一个文字：");
    return result;
}

int count(const Fields& fields, std::size_t index)
{
    const auto value = amount(fields[index]);
    if (!value || *value < 1 || *value > most || fields[index].contains(U"."))
        fields.refuse(U"此处须是大于 0 的整数：" + fields[index].str());
    return static_cast<int>(*value);
}

Charges charges(const Fields& fields, std::size_t index)
{
    Reader reader(fields, index);
    const bool of_record = reader.take(U"记录");
    if (!of_record && !reader.take(U"不变")) reader.refuse(U"费用须以“记录”或“不变”开头：");
    const auto first = amount(reader.word()), second = amount(reader.word());
    if (!first || !second || !reader.at_end()) fields.refuse(U"“记录”或“不变”之后须是两个费用：" + fields[index].str());
    return {of_record, *first, *second};
}

std::vector<Setting> settings(const Fields& fields, std::size_t index)
{
    std::vector<Setting> result;
    for (Reader reader(fields, index); !reader.at_end();) {
        int column = last_column;
        while (column >= first_column && !reader.take(number_text(column) + U"=")) --column;
        if (column < first_column) reader.refuse(U"此处须是“列=数”或“列=\"文字\"”，列为 5 至 12：");
        result.push_back({column, reader.value()});
    }
    if (result.empty()) fields.refuse(U"此栏须写入至少一列");
    return result;
}

} // namespace tarvik::repair_rules

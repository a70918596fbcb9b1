#include "repair_rules/rules.h"

#include "platform/failure.h"

#include <algorithm>

namespace tarvik::repair_rules {

namespace {

constexpr int last_column = 12, first_column = 5; // the columns of a sheet that rules may write
constexpr double most = 1'000'000;                // of anything that is counted

constexpr auto is_blank = [](char32_t c) { return c == U' ' || c == U'\t' || c == U'\r'; };

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

/// Names the line of the table, counting from 1.
[[noreturn]] void refuse_line(std::size_t line, const Text& reason)
{
    throw Failure(U" 请注意：\r\n维修规则表第 " + number_text(line) + U" 行：" + reason +
                  U"。各表没有改动，请改正后再试。");
}

/// A line cut at each | outside of quotes; the fields have no blanks around them. Fields count from 0.
class Fields {
public:
    Fields(TextView text, std::size_t line) : line_(line)
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

    std::size_t line() const { return line_; }
    std::size_t size() const { return fields_.size(); }
    TextView operator[](std::size_t index) const { return fields_[index]; }
    [[noreturn]] void refuse(const Text& reason) const { refuse_line(line_, reason); }
    /// Refuses a line with fewer or more fields.
    void require_size(std::size_t least, std::size_t most_fields) const
    {
        if (size() >= least && size() <= most_fields) return;
        const Text range = least < most_fields ? U" 至 " + number_text(most_fields) : Text();
        refuse(U"这一行须有 " + number_text(least) + range + U" 栏，实有 " + number_text(size()) + U" 栏");
    }

private:
    std::size_t line_;
    std::vector<TextView> fields_;
};

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

    /// What stands between two quotes.
    Text text()
    {
        const std::size_t end = rest_.starts_with(U"\"") ? rest_.find(U'"', 1) : npos;
        if (end == npos || end == 1) refuse(U"此处须是双引号内的文字：");
        Text result = rest_.substr(1, end - 1).str();
        rest_ = trimmed(rest_.substr(end + 1));
        return result;
    }

    /// A text, or the number up to the next blank.
    CellValue value()
    {
        if (rest_.starts_with(U"\"")) return text();
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

/// "-", or texts joined by 且 or 且无.
Condition condition(const Fields& fields, std::size_t index)
{
    Condition result;
    if (fields[index] == U"-") return result;
    Reader reader(fields, index);
    result.all_of.push_back(reader.text());
    while (!reader.at_end()) {
        const bool is_none = reader.take(U"且无");
        if (!is_none && !reader.take(U"且")) reader.refuse(U"文字之间须用“且”或“且无”连接：");
        if (is_none && !result.none_of.empty()) reader.refuse(U"一个条件里只能有一个“且无”：");
        (is_none ? result.none_of : result.all_of.emplace_back()) = reader.text();
    }
    return result;
}

/// Texts joined by 或.
std::vector<Text> alternatives(const Fields& fields, std::size_t index)
{
    Reader reader(fields, index);
    std::vector<Text> result{reader.text()};
    while (reader.take(U"或")) result.push_back(reader.text());
    if (!reader.at_end()) reader.refuse(U"文字之间须用“或”连接：");
    return result;
}

/// A whole number above 0.
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

/// `column=number` or `column="text"`, with blanks between several.
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

/// How many of each the table says that it has.
struct Counts {
    std::size_t line;
    int update, first_entry, charges, line_rules;
};

Text part_code(const Fields& fields, std::size_t index)
{
    const TextView code = fields[index];
    if (code.size() != 8 || (code[0] != U'2' && code[0] != U'3') || code.contains(U".") || !amount(code))
        fields.refuse(U"编码须是以 2 或 3 开头的八位数字：" + code.str());
    return code.str();
}

/// Records are read in lower case: a capital letter would never be found in them.
Text repair_word(const Fields& fields, std::size_t index)
{
    Reader reader(fields, index);
    Text word = reader.text();
    if (!reader.at_end()) reader.refuse(U"此栏只能有一个文字：");
    if (lower(word) != word) fields.refuse(U"维修文字里的字母须小写：" + word);
    return word;
}

class TableReader {
public:
    RuleTable read(TextView text)
    {
        for (std::size_t line = 1; !text.empty(); ++line) {
            const std::size_t end = std::min(text.find(U'\n'), text.size());
            read_line(text.substr(0, end), line);
            text = text.substr(end + 1);
        }
        check_counts();
        return std::move(table_);
    }

private:
    void read_line(TextView content, std::size_t line)
    {
        const Fields fields(content.starts_with(U"#") ? TextView() : content, line);
        const TextView kind = fields[0];
        if (fields.size() == 1 && kind.empty()) return;
        if (kind == U"数目") read_counts(fields);
        else if (kind == U"组") read_group(fields);
        else if (kind == U"更新") read_rule(fields, table_.update);
        else if (kind == U"首次") read_rule(fields, table_.first_entry);
        else if (kind == U"收费") read_charge_entry(fields);
        else if (kind == U"行") read_line_rule(fields);
        else fields.refuse(U"第一栏须是 数目、组、更新、首次、收费、行 之一：" + kind.str());
    }

    void read_counts(const Fields& fields)
    {
        fields.require_size(5, 5);
        if (counts_) fields.refuse(U"数目只能写一行");
        counts_ = Counts{fields.line(), count(fields, 1), count(fields, 2), count(fields, 3), count(fields, 4)};
    }

    void read_group(const Fields& fields)
    {
        fields.require_size(4, 4);
        if (std::ranges::find(group_names_, fields[1].str()) != group_names_.end())
            fields.refuse(U"这个组已经有了：" + fields[1].str());
        group_names_.push_back(fields[1].str());
        table_.update.groups.push_back(condition(fields, 2));
        table_.first_entry.groups.push_back(condition(fields, 3));
    }

    std::size_t group(const Fields& fields) const
    {
        const auto found = std::ranges::find(group_names_, fields[1].str());
        if (found == group_names_.end()) fields.refuse(U"没有这个组：" + fields[1].str());
        return static_cast<std::size_t>(found - group_names_.begin());
    }

    void read_rule(const Fields& fields, Chain& chain)
    {
        fields.require_size(6, 7);
        Rule rule{.line = fields.line(),
                  .group = group(fields),
                  .model = condition(fields, 2),
                  .repair_word = repair_word(fields, 3),
                  .code = part_code(fields, 4),
                  .quantity = static_cast<double>(count(fields, 5)),
                  .charges = {}};
        if (fields.size() == 7) rule.charges = charges(fields, 6);
        add(std::move(rule), chain);
    }

    void read_charge_entry(const Fields& fields)
    {
        fields.require_size(4, 4);
        add({fields.line(), group(fields), condition(fields, 2), {}, {}, 0, charges(fields, 3)}, table_.first_entry);
    }

    void read_line_rule(const Fields& fields)
    {
        fields.require_size(4, 4);
        const int column = count(fields, 1);
        if (column != 2 && column != 5 && column != 6) fields.refuse(U"行规则只能看第 2、5、6 列");
        table_.line_rules.push_back({column, alternatives(fields, 2), settings(fields, 3)});
    }

    /// Two lines that ask the same must not stand in one chain, and in the two chains they must name the same part.
    void add(Rule rule, Chain& chain)
    {
        for (const Chain* other : {&table_.update, &table_.first_entry})
            for (const Rule& earlier : other->rules) check_pair(earlier, rule, other == &chain);
        chain.rules.push_back(std::move(rule));
    }

    static void check_pair(const Rule& earlier, const Rule& later, bool same_chain)
    {
        if (earlier.group != later.group || earlier.repair_word != later.repair_word || earlier.model != later.model)
            return;
        const Text place = U"与第 " + number_text(earlier.line) + U" 行";
        if (same_chain) refuse_line(later.line, place + U"重复");
        if (earlier.code.empty() || later.code.empty()) return;
        if (earlier.code != later.code)
            refuse_line(later.line, place + U"条件相同而编码不同：" + earlier.code + U"、" + later.code);
        if (earlier.quantity != later.quantity)
            refuse_line(later.line, place + U"条件相同而数量不同：" + number_text(earlier.quantity) + U"、" +
                                        number_text(later.quantity));
    }

    void check_count(TextView what, int stated, std::ptrdiff_t found) const
    {
        if (stated != found)
            refuse_line(counts_->line,
                        what.str() + U"应有 " + number_text(stated) + U" 条，实有 " + number_text(found) + U" 条");
    }

    void check_counts() const
    {
        if (!counts_) refuse_line(1, U"缺少数目一行");
        const auto& first = table_.first_entry.rules;
        const auto charges = std::ranges::count_if(first, [](const Rule& rule) { return rule.code.empty(); });
        check_count(U"更新规则", counts_->update, std::ssize(table_.update.rules));
        check_count(U"首次规则", counts_->first_entry, std::ssize(first) - charges);
        check_count(U"收费", counts_->charges, charges);
        check_count(U"行规则", counts_->line_rules, std::ssize(table_.line_rules));
    }

    RuleTable table_{
        .update = {.groups = {{}}, .rules = {}}, .first_entry = {.groups = {{}}, .rules = {}}, .line_rules = {}};
    std::vector<Text> group_names_{U"-"}; ///< the first asks for nothing
    std::optional<Counts> counts_;
};

} // namespace

bool Condition::holds(TextView text) const
{
    const auto held = [&](const Text& wanted) { return text.contains(wanted); };
    return std::ranges::all_of(all_of, held) && (none_of.empty() || !held(none_of));
}

RuleTable read_rules(TextView text)
{
    return TableReader().read(text);
}

} // namespace tarvik::repair_rules

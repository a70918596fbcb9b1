#include "columns/columns.h"

#include "columns/views.h"
#include "platform/text/text_index.h"

#include <algorithm>

namespace tarvik {

namespace {

/// No view of empty lines needs to be longer than this.
constexpr std::int64_t most_empty_lines = 1'000'000;

struct Columns {
    std::size_t suf, sug;
};

/// How often each value stands in a column of SUG, which is looked at down to the last row of SUF.
class ValueCounts {
public:
    ValueCounts(const Table& table, std::size_t column, std::size_t rows)
    {
        for (std::size_t row = 0; row < rows; ++row) {
            const TextView value = table.cell(row, column);
            if (value.empty()) continue;
            const auto [number, is_new] = values_.insert(value);
            if (is_new) counts_.push_back(0);
            counts_[number] += 1;
        }
    }
    std::int64_t of(TextView value) const
    {
        const std::size_t number = value.empty() ? npos : values_.find(value);
        return number == npos ? 0 : counts_[number];
    }

private:
    TextIndex values_;
    std::vector<std::int64_t> counts_;
};

struct Matches {
    std::int64_t pairs = 0;
    std::int64_t pairs_of_emptied_rows = 0;
    std::vector<std::size_t> rows; ///< rows of SUF with a match, in order
};

Matches match(const Module1& arrays, Columns columns, std::size_t rows)
{
    const ValueCounts counts(arrays.sug, columns.sug, rows);
    Matches matches;
    for (std::size_t row = 0; row < rows; ++row) {
        const std::int64_t count = counts.of(arrays.suf.cell(row, columns.suf));
        if (count == 0) continue;
        matches.pairs += count;
        if (arrays.sufrow.is_empty(row)) matches.pairs_of_emptied_rows += count;
        else matches.rows.push_back(row);
    }
    return matches;
}

/// Row texts without copies: of equal ones the last stays.
std::vector<std::size_t> last_copies(const RowTexts& sufrow, const std::vector<std::size_t>& rows)
{
    TextIndex seen(rows.size());
    std::vector<std::size_t> kept;
    for (std::size_t i = rows.size(); i-- > 0;)
        if (seen.insert(sufrow.line(rows[i])).is_new) kept.push_back(rows[i]);
    std::ranges::reverse(kept);
    return kept;
}

/// The intersection. The pairs of rows that an earlier comparison has emptied are empty lines at its end, and two more
/// close it.
void show_intersection(Program& program, const Matches& matches)
{
    const RowTexts& sufrow = program.module1.sufrow;
    const std::vector<std::size_t> kept = last_copies(sufrow, matches.rows);
    const auto view = std::make_shared<RowView>(sufrow.buffers());
    for (const std::size_t row : kept) view->add_row(sufrow.line(row));
    for (auto left = std::min(matches.pairs_of_emptied_rows, most_empty_lines) + 2; left > 0; --left) view->add_row({});
    ScratchFile file(program, U"between1.txt");
    show_view(program, file, view);
    const std::int64_t count = std::ssize(kept) + matches.pairs_of_emptied_rows;
    program.form1.number_box().set_text(number_text(count));
}

Text outcome(const Program& program, std::u32string_view sign)
{
    return U"\r\n  SUF表中的第" + number_text(program.form1.sufcol) + U"列含有与SUG表的第" +
           program.form3.Text1[4].text() + U"列中字段" + sign + U"的记录 。 ";
}

void show_remainder(Program& program, std::size_t rows)
{
    Form1& form1 = program.form1;
    const RowTexts& sufrow = program.module1.sufrow;
    const auto view = std::make_shared<RowView>(sufrow.buffers());
    for (std::size_t row = 0; row < rows; ++row)
        if (!sufrow.is_empty(row)) view->add_row(sufrow.line(row));
    form1.compcount = static_cast<std::int64_t>(view->line_count());
    ScratchFile file(program, U"between.txt");
    show_view(program, file, view);
    tell(program, U" 温情提示：" + outcome(program, U"不“∩”"), U"  Tarvik 计算 ");
    // The closing row is among them.
    form1.number_box().set_text(form1.compcount == 0 ? U"0" : number_text(form1.compcount - 1));
}

} // namespace

void cross_comparison(Program& program)
{
    Form1& form1 = program.form1;
    RowTexts& sufrow = program.module1.sufrow;
    const Columns columns{static_cast<std::size_t>(form1.sufcol), box_column(program, 4)};
    form1.sufcount = std::max(form1.sufcount, form1.sugcount);
    const std::size_t rows = static_cast<std::size_t>(form1.sufcount) + 1;

    Matches matches = match(program.module1, columns, rows);
    if (form1.notcap) {
        for (const std::size_t row : matches.rows) sufrow.clear(row, row);
        matches = {};
    } else {
        form1.compcount = matches.pairs;
    }
    show_intersection(program, matches);
    if (form1.notcap) show_remainder(program, rows);
    else tell(program, U" 温情提示：" + outcome(program, U"“∩”"), U"  Tarvik  计算查寻 ");
    form1.RichTextBox3.append(U"\r\n");
}

} // namespace tarvik

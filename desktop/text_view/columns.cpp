#include "desktop/text_view/columns.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tarvik {

namespace {

constexpr std::size_t most_columns = 500;

// What stands before a cell in the view of a split.
struct SplitSign {
    std::size_t length = 0; // 0 where there is none
    std::size_t column = 0;
};

SplitSign split_sign(std::u32string_view text)
{
    constexpr std::u32string_view closing = U")***";
    if (!text.starts_with(U"suf(") && !text.starts_with(U"sug(")) return {};
    std::size_t at = 4;
    const auto number = [&] {
        std::size_t value = 0;
        for (; at < text.size() && at < 16 && text[at] >= U'0' && text[at] <= U'9'; ++at)
            value = value * 10 + (text[at] - U'0');
        return value;
    };
    number(); // the row
    if (at >= text.size() || text[at++] != U',') return {};
    const std::size_t column = number();
    if (!text.substr(at).starts_with(closing)) return {};
    return {at + closing.size(), column};
}

std::vector<Cell> split_cells(std::u32string_view line)
{
    std::vector<Cell> cells;
    for (std::size_t at = 0; at < line.size();) {
        const SplitSign sign = split_sign(line.substr(at));
        if (sign.length > 0) cells.push_back({at, line.size(), sign.column});
        if (sign.length > 0 && cells.size() > 1) cells[cells.size() - 2].end = at;
        at = std::min(line.find(U" su", at + std::max<std::size_t>(sign.length, 1)), line.size() - 1) + 1;
    }
    return cells;
}

} // namespace

std::vector<Cell> cells_of(std::u32string_view line)
{
    if (split_sign(line).length > 0) return split_cells(line);
    std::vector<Cell> cells;
    if (line.find(U'\t') == std::u32string_view::npos) return cells;
    for (std::size_t start = 0; start <= line.size() && cells.size() < most_columns;) {
        const std::size_t end = std::min(line.find(U'\t', start), line.size());
        cells.push_back({start, end, cells.size()});
        start = end + 1;
    }
    return cells;
}

bool ColumnStops::make_room(std::size_t column, double width, double least, double most)
{
    if (column >= most_columns) return false;
    const bool is_new = column >= widths_.size();
    if (is_new) widths_.resize(column + 1, least);
    const double wanted = std::max(widths_[column], std::min(width, most));
    return std::exchange(widths_[column], wanted) < wanted || is_new;
}

double ColumnStops::start(std::size_t column) const
{
    const auto behind = widths_.begin() + static_cast<std::ptrdiff_t>(std::min(column, widths_.size()));
    return std::accumulate(widths_.begin(), behind, 0.0);
}

} // namespace tarvik

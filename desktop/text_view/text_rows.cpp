#include "desktop/text_view/text_rows.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace tarvik {

namespace {

constexpr std::size_t stride = 4096; // from remembered place to remembered place in a long line

std::size_t mark_end(const Mark& mark)
{
    return mark.start.offset() + mark.length;
}

constexpr std::u32string_view closing = U"!),.:;?]}。，、；：？！）】》」』”’〕〉］｝…—％℃";
constexpr std::u32string_view opening = U"([{（【《「『“‘〔〈［｛￥$";

constexpr std::u32string_view blanks = U" \t\u3000";
constexpr char32_t first_wide = 0x2e80; // from the radicals on, scripts are written without blanks between words

constexpr bool holds(std::u32string_view set, char32_t character)
{
    return set.find(character) != std::u32string_view::npos;
}

// Whether a row may end between two characters: behind blanks and hyphens, and between Chinese characters, but not
// before a closing nor behind an opening mark.
bool may_break_between(char32_t before, char32_t after)
{
    if (holds(blanks, after)) return false; // blanks hang over the edge
    if (holds(blanks, before)) return true;
    if (holds(closing, after) || holds(opening, before)) return false;
    return before == U'-' || std::max(before, after) >= first_wide || holds(closing.substr(9), before);
}

} // namespace

std::span<const Mark> TextRows::marks_from(std::size_t offset) const
{
    return {std::ranges::upper_bound(look_.marks, offset, {}, mark_end), look_.marks.end()};
}

// Calls visit(PlacedCharacter) for each character until it gives false.
template <typename Visit>
void TextRows::walk(std::size_t from, std::size_t to, double x, std::span<const Place> jumps, Visit&& visit) const
{
    while (!jumps.empty() && jumps.front().offset <= from) jumps = jumps.subspan(1);
    const FontSize* size = &font_.size(look_.points);
    PlacedCharacter placed{from, 0, x, 0, look_.points, nullptr};
    std::size_t style_end = from;
    Text part;
    for (std::size_t begin = from; begin < to; begin += part.size()) {
        part.clear();
        lines_.append_to(begin, std::min(stride, to - begin), part);
        if (part.empty()) return;
        for (const char32_t character : part) {
            if (placed.offset >= style_end) {
                const std::span<const Mark> marks = marks_from(placed.offset);
                const bool marked = !marks.empty() && marks.front().start.offset() <= placed.offset;
                placed.mark = marked ? &marks.front() : nullptr;
                placed.points = marked ? placed.mark->size : look_.points;
                style_end = marked ? mark_end(*placed.mark) : marks.empty() ? npos : marks.front().start.offset();
                size = &font_.size(placed.points);
            }
            placed.character = character;
            placed.width = character == U'\t' && !stops_
                               ? (std::floor(placed.x / size->tab + 1e-6) + 1) * size->tab - placed.x
                               : size->width_of(character);
            if (!jumps.empty() && jumps.front().offset == placed.offset + 1) {
                placed.width = std::max(placed.width, jumps.front().x - placed.x);
                jumps = jumps.subspan(1);
            }
            if (!visit(placed)) return;
            placed.x += placed.width;
            ++placed.offset;
        }
    }
}

std::size_t TextRows::row_end(std::size_t start, std::size_t line_end) const
{
    if (!width_) return line_end;
    std::size_t end = line_end, breakable = start;
    char32_t before = 0;
    walk(start, line_end, 0, {}, [&](const PlacedCharacter& placed) {
        if (before != 0 && may_break_between(before, placed.character)) breakable = placed.offset;
        before = placed.character;
        const bool hangs = placed.character == U' ' || placed.character == U'\t';
        if (placed.x + placed.width <= *width_ || hangs || placed.offset == start) return true;
        end = breakable > start ? breakable : placed.offset;
        return false;
    });
    return end;
}

Row TextRows::row_from(std::size_t start, std::size_t line_start, std::size_t line_end) const
{
    Row row{start, row_end(start, line_end), line_start, line_end};
    const auto grow = [&](int points) {
        const FontSize& size = font_.size(points);
        row.height = std::max(row.height, size.height);
        row.ascent = std::max(row.ascent, size.ascent);
    };
    grow(look_.points);
    for (const Mark& mark : marks_from(row.start)) {
        if (mark.start.offset() >= row.end) break;
        grow(mark.size);
    }
    return row;
}

// What is known of the line that begins there.
std::vector<TextRows::Place>& TextRows::remembered(std::size_t line_start, double x) const
{
    constexpr std::size_t most_remembered = 256;
    if (places_.size() >= most_remembered && !places_.contains(line_start)) places_.clear();
    std::vector<Place>& known = places_[line_start];
    if (known.empty()) known = {{line_start, x}};
    return known;
}

// The beginning of a row of the line that lies at or before the offset, not far before it.
std::size_t TextRows::row_start_before(std::size_t line_start, std::size_t line_end, std::size_t offset) const
{
    if (!width_ || offset - line_start < stride) return line_start;
    std::vector<Place>& known = remembered(line_start, 0);
    std::size_t start = known.back().offset;
    while (start + stride < offset) {
        start = row_end(start, line_end);
        if (start - known.back().offset >= stride) known.push_back({start, 0});
        if (start >= line_end) break;
    }
    return (std::ranges::upper_bound(known, offset, {}, &Place::offset) - 1)->offset;
}

Row TextRows::row_at(std::size_t offset) const
{
    offset = std::min(offset, lines_.size());
    const std::size_t line = lines_.line_at(offset);
    const std::size_t line_start = lines_.line_start(line), line_end = lines_.line_end(line);
    std::size_t start = row_start_before(line_start, line_end, std::min(offset, line_end));
    for (;;) {
        const std::size_t end = row_end(start, line_end);
        if (offset < end || end >= line_end) break;
        start = end;
    }
    return row_from(start, line_start, line_end);
}

std::optional<Row> TextRows::next(const Row& row) const
{
    if (!row.ends_line()) return row_from(row.end, row.line_start, row.line_end);
    const std::size_t line = lines_.line_at(row.line_end);
    if (line + 1 >= lines_.line_count()) return std::nullopt;
    const std::size_t start = lines_.line_start(line + 1);
    return row_from(start, start, lines_.line_end(line + 1));
}

Row TextRows::away(Row row, int count) const
{
    for (; count != 0; count += count > 0 ? -1 : 1) {
        const auto other = count > 0 ? next(row) : previous(row);
        if (!other) break;
        row = *other;
    }
    return row;
}

// Where the cells of a row that is a whole line begin, one width behind the last at least.
std::vector<TextRows::Place> TextRows::cell_places(const Row& row) const
{
    std::vector<Place> cells;
    if (!stops_ || row.end - row.start > longest_table_line) return cells;
    Text line;
    lines_.append_to(row.start, row.end - row.start, line);
    double end = 0;
    const double blank = font_.size(look_.points).width_of(U' ');
    for (const Cell& cell : cells_of(line)) {
        const double x = std::max(cells.empty() ? 0 : end + blank, stops_->start(cell.column));
        cells.push_back({row.start + cell.start, x});
        end = x;
        walk(row.start + cell.start, row.start + cell.end, x, {}, [&](const PlacedCharacter& placed) {
            end = placed.x + placed.width;
            return true;
        });
    }
    return cells;
}

// The last of the remembered places that is not behind what is looked for.
template <typename IsBehind>
TextRows::Place TextRows::place_before(const Row& row, IsBehind&& is_behind) const
{
    const auto cells = cell_places(row);
    const Place beginning{row.start, cells.empty() ? 0 : cells.front().x};
    if (row.end - row.start < 2 * stride) return beginning;
    std::vector<Place>& known = remembered(row.start, beginning.x);
    if (known.size() == 1)
        walk(row.start, row.end, beginning.x, cells, [&known](const PlacedCharacter& placed) {
            if (placed.offset - known.back().offset >= stride) known.push_back({placed.offset, placed.x});
            return true;
        });
    return *(std::find_if(known.begin() + 1, known.end(), is_behind) - 1);
}

double TextRows::x_of(const Row& row, std::size_t offset) const
{
    offset = std::clamp(offset, row.start, row.end);
    const Place from = place_before(row, [offset](const Place& place) { return place.offset > offset; });
    double x = from.x;
    walk(from.offset, offset, from.x, cell_places(row), [&](const PlacedCharacter& placed) {
        x = placed.x + placed.width;
        return true;
    });
    return x;
}

std::size_t TextRows::offset_at(const Row& row, double x) const
{
    const Place from = place_before(row, [x](const Place& place) { return place.x > x; });
    std::size_t offset = row.last_place();
    walk(from.offset, offset, from.x, cell_places(row), [&](const PlacedCharacter& placed) {
        if (x >= placed.x + placed.width / 2) return true;
        offset = placed.offset;
        return false;
    });
    return offset;
}

std::vector<PlacedCharacter> TextRows::between(const Row& row, double left, double right) const
{
    std::vector<PlacedCharacter> placed_characters;
    const Place from = place_before(row, [left](const Place& place) { return place.x > left; });
    walk(from.offset, row.end, from.x, cell_places(row), [&](const PlacedCharacter& placed) {
        if (placed.x >= right) return false;
        if (placed.x + placed.width > left) placed_characters.push_back(placed);
        return true;
    });
    return placed_characters;
}

} // namespace tarvik

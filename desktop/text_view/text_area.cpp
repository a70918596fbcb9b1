#include "desktop/text_view/text_area.h"

#include <utility>

namespace tarvik {

namespace {

constexpr std::size_t first_lines = 100;
constexpr std::size_t longest_measured = 4096;                           // characters of a line
constexpr double least_blanks = 2, most_blanks = 60, blanks_between = 3; // of a column

} // namespace

// The width that is there for the user counts from the first look on; what is scrolled to adds to it.
void TextArea::look_at_first_lines()
{
    std::size_t looked_at = 0, tables = 0, leading = 0;
    for (std::size_t line = 0; line < std::min(first_lines, lines_.line_count()); ++line) {
        const std::size_t start = lines_.line_start(line), end = lines_.line_end(line);
        if (start == end) continue;
        ++looked_at;
        const auto cells = make_room(start, end);
        if (cells.empty()) continue;
        ++tables;
        const Cell& first = cells.front();
        if (first.column > 0 || first.start == first.end) ++leading;
    }
    is_table_ = !breaks_lines_ && tables > 0 && 2 * tables >= looked_at;
    first_column_ = 2 * leading > tables ? 0 : 1;
}

// Gives the cells of the line.
std::vector<Cell> TextArea::make_room(std::size_t start, std::size_t end)
{
    Text line;
    lines_.append_to(start, std::min(end - start, longest_measured), line);
    auto cells = cells_of(line);
    const FontSize& size = font_.size(look_.points);
    for (const Cell& cell : cells) {
        double width = blanks_between * size.width_of(U' ');
        for (std::size_t i = cell.start; i < cell.end; ++i) width += size.width_of(line[i]);
        make_room(cell.column, width);
    }
    return cells;
}

void TextArea::make_room(std::size_t column, double width)
{
    const double blank = font_.size(look_.points).width_of(U' ');
    stops_moved_ |= stops_.make_room(column, width, least_blanks * blank, most_blanks * blank);
}

void TextArea::set_text(PaneText text, bool stay)
{
    lines_ = TextLines(std::move(text), lines_);
    if (!stay) {
        top_ = 0;
        left_ = widest_ = 0;
    }
    lay_rows();
}

void TextArea::set_look(TextLook look)
{
    if (look == look_) return;
    look_ = std::move(look);
    lay_rows();
}

void TextArea::set_wraps_prose(bool wraps)
{
    if (std::exchange(wraps_prose_, wraps) != wraps) lay_rows();
}

void TextArea::set_size(double width, double height)
{
    if (width == width_ && height == height_) return;
    const bool rows_change = breaks_lines_ && width != width_;
    width_ = width;
    height_ = height;
    if (rows_change) lay_rows();
    else scroll_to(top_);
}

void TextArea::lay_rows()
{
    stops_.clear();
    breaks_lines_ = look_.breaks_lines;
    look_at_first_lines();
    breaks_lines_ |= wraps_prose_ && !is_table_;
    if (breaks_lines_) left_ = widest_ = 0;
    for (std::size_t column = 0; is_table_ && column < stops_.count(); ++column)
        make_room(column, heading_width(first_column_ + static_cast<int>(column)));
    make_rows();
    scroll_to(top_);
}

void TextArea::make_rows()
{
    const auto width = breaks_lines_ ? std::optional(std::max(1.0, width_ - 2 * margin)) : std::nullopt;
    rows_.emplace(lines_, font_, look_, width, &stops_);
    stops_moved_ = false;
}

void TextArea::show_rows()
{
    shown_.clear();
    double y = 0;
    for (std::optional<Row> row = rows_->row_at(top_); row && (y < height_ || shown_.empty());
         row = rows_->next(*row)) {
        shown_.push_back({*row, y});
        y += row->height;
    }
    if (breaks_lines_) return;
    for (const ShownRow& shown : shown_) make_room(shown.row.start, shown.row.end);
    if (stops_moved_) make_rows();
    for (const ShownRow& shown : shown_) widest_ = std::max(widest_, rows_->x_of(shown.row, shown.row.end));
}

std::size_t TextArea::top_above(Row row) const
{
    double left = height_ - row.height;
    while (const auto above = rows_->previous(row)) {
        left -= above->height;
        if (left < 0) break;
        row = *above;
    }
    return row.start;
}

void TextArea::scroll_to(std::size_t offset)
{
    top_ = std::min(rows_->row_at(offset).start, last_top());
    show_rows();
}

int TextArea::whole_rows() const
{
    const auto whole = std::ranges::count_if(
        shown_, [this](const ShownRow& shown) { return shown.y + shown.row.height <= height_ + 0.5; });
    return std::max(1, static_cast<int>(whole));
}

void TextArea::bring_into_view(std::size_t offset, bool to_top)
{
    const Row row = rows_->row_at(offset);
    const auto shown = std::ranges::find_if(
        shown_, [&](const ShownRow& of) { return of.row.start == row.start && of.y + row.height <= height_ + 0.5; });
    if (shown == shown_.end()) {
        const bool is_below = !shown_.empty() && row.start > shown_.front().row.start;
        scroll_to(is_below && !to_top ? top_above(row) : row.start);
    }
    if (breaks_lines_) return;
    const double x = rows_->x_of(row, offset);
    const double room = std::max(1.0, width_ - 2 * margin);
    if (x < left_) set_left(x - room / 4);
    else if (x > left_ + room) set_left(x - room * 3 / 4);
    widest_ = std::max(widest_, x);
}

std::size_t TextArea::offset_at(double x, double y) const
{
    const ShownRow* hit = &shown_.front();
    for (const ShownRow& shown : shown_)
        if (shown.y <= y) hit = &shown;
    return rows_->offset_at(hit->row, x - margin + left_);
}

} // namespace tarvik

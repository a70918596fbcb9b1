#include "desktop/text_view/text_area.h"

#include <algorithm>

namespace tarvik {

void TextArea::set_text(PaneText text, bool stay)
{
    lines_ = TextLines(std::move(text), lines_);
    if (!stay) {
        top_ = 0;
        left_ = widest_ = 0;
    }
    lay_rows();
}

void TextArea::set_look(TextLook look, bool breaks_lines)
{
    if (look == look_ && breaks_lines == breaks_lines_) return;
    look_ = std::move(look);
    breaks_lines_ = breaks_lines;
    lay_rows();
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
    const auto width = breaks_lines_ ? std::optional(std::max(1.0, width_ - 2 * margin)) : std::nullopt;
    rows_.emplace(lines_, font_, look_, width);
    scroll_to(top_);
}

void TextArea::show_rows()
{
    shown_.clear();
    double y = 0;
    for (std::optional<Row> row = rows_->row_at(top_); row && (y < height_ || shown_.empty());
         row = rows_->next(*row)) {
        shown_.push_back({*row, y});
        y += row->height;
        if (!breaks_lines_) widest_ = std::max(widest_, rows_->width_of(*row));
    }
}

std::size_t TextArea::last_top() const
{
    Row row = rows_->row_at(lines_.size());
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

void TextArea::scroll_rows(int count)
{
    Row row = rows_->row_at(top_);
    for (; count != 0; count += count > 0 ? -1 : 1) {
        const auto other = count > 0 ? rows_->next(row) : rows_->previous(row);
        if (!other) break;
        row = *other;
    }
    scroll_to(row.start);
}

void TextArea::set_left(double left)
{
    left_ = std::max(0.0, left);
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
        top_ = row.start;
        if (!to_top && !shown_.empty() && row.start > shown_.front().row.start) {
            double room = height_ - row.height;
            for (Row above = row;;) {
                const auto next = rows_->previous(above);
                if (!next || (room -= next->height) < 0) break;
                above = *next;
                top_ = above.start;
            }
        }
        scroll_to(top_);
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
    const std::size_t offset = rows_->offset_at(hit->row, x - margin + left_);
    // Behind the last character of a broken row the place would be the beginning of the next.
    const bool at_break = offset == hit->row.end && !hit->row.ends_line() && offset > hit->row.start;
    return at_break ? offset - 1 : offset;
}

} // namespace tarvik

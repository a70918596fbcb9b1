#include "desktop/text_view/text_widget.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QStyleHints>

/// Caret and selection of a text view, moved by keys and by the mouse.
namespace tarvik {

namespace {

constexpr int drag_interval = 40; // milliseconds between two steps while the pointer is held outside
constexpr int drag_columns = 24;  // pixels of a step sideways

// What belongs to one word: letters and digits, Chinese characters, or signs of any kind.
int word_kind(char32_t character)
{
    if (character <= U' ') return 0;
    if (character >= 0x2e80) return 1;
    const bool letter = (character | 0x20) >= U'a' && (character | 0x20) <= U'z';
    const bool digit = character >= U'0' && character <= U'9';
    return letter || digit || character == U'_' || character >= 0xc0 ? 2 : 3;
}

// What the codes, numbers and dates of reports are made of.
bool is_code(char32_t character)
{
    return word_kind(character) == 2 || std::u32string_view(U"-./#").find(character) != npos;
}

} // namespace

void TextWidget::select_and_show(std::size_t from, std::size_t to)
{
    select(from, to);
    shows_selection_ = false;
    if (QAccessible::isActive()) {
        QAccessibleTextCursorEvent moved(this, static_cast<int>(caret_));
        QAccessible::updateAccessibility(&moved);
    }
    area_.bring_into_view(place_in_view(), false);
    show_scroll_bars();
    blink();
}

// A code such as yq-r8808 or 2016/09/22, else the cell of a table, else a word.
void TextWidget::select_word(std::size_t offset)
{
    const TextLines& lines = area_.lines();
    const auto in_code = [&](std::size_t at) { return at < lines.size() && is_code(lines.at(at)); };
    if (in_code(offset)) {
        std::size_t start = offset, code_end = offset + 1;
        while (start > 0 && in_code(start - 1)) --start;
        while (in_code(code_end)) ++code_end;
        return select_and_show(start, code_end);
    }
    const Row row = area_.rows().row_at(offset);
    Text line;
    lines.append_to(row.line_start, std::min<std::size_t>(row.line_end - row.line_start, longest_table_line), line);
    for (const Cell& cell : cells_of(line))
        if (offset >= row.line_start + cell.start && offset < row.line_start + cell.end)
            return select_and_show(row.line_start + cell.start, row.line_start + cell.end);
    const std::size_t end = word_edge(offset, true);
    select_and_show(word_edge(std::min(offset + 1, end), false), end);
}

void TextWidget::select(std::size_t from, std::size_t to)
{
    anchor_ = std::min(from, area_.lines().size());
    caret_ = std::min(to, area_.lines().size());
    wanted_x_.reset();
    text_.select({Position::at_offset(selection_start()), selection_end() - selection_start()});
    viewport()->update();
}

// CR LF is one step.
std::size_t TextWidget::left_of(std::size_t offset) const
{
    const TextLines& lines = area_.lines();
    const bool line_break = offset >= 2 && lines.at(offset - 1) == U'\n' && lines.at(offset - 2) == U'\r';
    return offset - std::min<std::size_t>(offset, line_break ? 2 : 1);
}

std::size_t TextWidget::right_of(std::size_t offset) const
{
    const TextLines& lines = area_.lines();
    const bool line_break = offset + 1 < lines.size() && lines.at(offset) == U'\r' && lines.at(offset + 1) == U'\n';
    return std::min(offset + (line_break ? 2 : 1), lines.size());
}

std::size_t TextWidget::word_edge(std::size_t offset, bool forward) const
{
    const TextLines& lines = area_.lines();
    const std::size_t size = lines.size();
    const auto kind = [&](std::size_t at) { return word_kind(lines.at(forward ? at : at - 1)); };
    const auto more = [&](std::size_t at) { return forward ? at < size : at > 0; };
    if (!more(offset)) return offset;
    const int first = kind(offset);
    while (more(offset) && kind(offset) == first) offset = forward ? offset + 1 : offset - 1;
    return offset;
}

bool TextWidget::move_by_key(const QKeyEvent& event)
{
    const bool extend = event.modifiers().testFlag(Qt::ShiftModifier);
    const bool far = event.modifiers().testFlag(Qt::ControlModifier);
    const bool collapse = !extend && anchor_ != caret_;
    const auto go = [this, extend](std::size_t target) {
        select_and_show(extend ? anchor_ : target, target);
        return true;
    };
    const TextRows& rows = area_.rows();
    const Row row = rows.row_at(caret_);
    if (const int down = rows_of(event.key()); down != 0) {
        const double x = wanted_x_.value_or(rows.x_of(row, caret_));
        go(rows.offset_at(rows.away(row, down), x));
        wanted_x_ = x;
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Left:
        return go(far ? word_edge(left_of(caret_), false) : collapse ? selection_start() : left_of(caret_));
    case Qt::Key_Right:
        return go(far ? word_edge(right_of(caret_), true) : collapse ? selection_end() : right_of(caret_));
    case Qt::Key_Home: return go(far ? 0 : row.start);
    case Qt::Key_End: return go(far ? area_.lines().size() : row.last_place());
    default: return false;
    }
}

void TextWidget::mousePressEvent(QMouseEvent* event)
{
    const bool third = since_double_click_.isValid() &&
                       since_double_click_.elapsed() < QGuiApplication::styleHints()->mouseDoubleClickInterval();
    since_double_click_.invalidate();
    if (event->button() == Qt::LeftButton) {
        const bool asks = event->modifiers().testFlag(Qt::ControlModifier);
        const bool extend = event->modifiers().testFlag(Qt::ShiftModifier) && !asks;
        dragging_ = !third && !asks;
        front_.queue.submit([this, third, asks, extend, place = event->position()] {
            const std::size_t offset = area_.offset_at(place.x(), place.y());
            const Row row = area_.rows().row_at(offset);
            if (third) return select(row.line_start, row.line_end);
            select_and_show(extend ? anchor_ : offset, offset);
            if (asks) word_asked(word_at_hand());
        });
    }
    post_mouse(front_, text_, EventKind::MouseDown, *event);
}

void TextWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!dragging_) return;
    drag_position_ = event->pos();
    if (viewport()->rect().contains(drag_position_)) {
        drag_timer_.stop();
        drag_to(drag_position_);
    } else if (!drag_timer_.isActive()) {
        drag_timer_.start(drag_interval);
    }
}

void TextWidget::drag_to(const QPoint& position)
{
    if (front_.queue.busy()) return;
    const QRect inside = viewport()->rect();
    if (position.y() < inside.top()) area_.scroll_rows(-1);
    if (position.y() > inside.bottom()) area_.scroll_rows(1);
    if (position.x() < inside.left()) area_.set_left(area_.left() - drag_columns);
    if (position.x() > inside.right())
        area_.set_left(std::min(area_.left() + drag_columns, std::max(0.0, area_.widest() - area_.width())));
    const std::size_t offset = area_.offset_at(position.x(), position.y());
    front_.queue.submit([this, offset] { select_and_show(anchor_, offset); });
}

void TextWidget::mouseReleaseEvent(QMouseEvent* event)
{
    const bool was_dragging = dragging_ && event->button() == Qt::LeftButton;
    if (was_dragging) {
        dragging_ = false;
        drag_timer_.stop();
    }
    post_mouse(front_, text_, EventKind::MouseUp, *event);
    if (was_dragging) front_.queue.post({EventKind::Click, text_});
}

void TextWidget::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        mousePressEvent(event);
        return;
    }
    since_double_click_.start();
    const QPointF place = event->position();
    front_.queue.submit([this, place] { select_word(area_.offset_at(place.x(), place.y())); });
    front_.queue.post({EventKind::DblClick, text_});
}

void TextWidget::contextMenuEvent(QContextMenuEvent* event)
{
    take_context_menu(front_, text_, *event);
}

} // namespace tarvik

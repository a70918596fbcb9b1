#include "desktop/front/input.h"
#include "desktop/text_view/text_widget.h"

#include <QGuiApplication>
#include <QScrollBar>
#include <QStyleHints>

namespace tarvik {

namespace {

constexpr int drag_interval = 40; // milliseconds between two steps while the pointer is held outside
constexpr int drag_columns = 24;  // pixels of a step sideways

} // namespace

void TextWidget::mousePressEvent(QMouseEvent* event)
{
    const bool third = since_double_click_.isValid() &&
                       since_double_click_.elapsed() < QGuiApplication::styleHints()->mouseDoubleClickInterval();
    since_double_click_.invalidate();
    if (event->button() == Qt::LeftButton && third) {
        front_.queue.submit([this, place = event->position()] { select_line(area_.offset_at(place.x(), place.y())); });
    } else if (event->button() == Qt::LeftButton && event->modifiers().testFlag(Qt::ControlModifier)) {
        front_.queue.submit([this, place = event->position()] {
            move_caret(area_.offset_at(place.x(), place.y()), false);
            word_asked(word_at_hand());
        });
    } else if (event->button() == Qt::LeftButton) {
        dragging_ = true;
        const bool extend = event->modifiers().testFlag(Qt::ShiftModifier);
        front_.queue.submit(
            [this, place = event->position(), extend] { move_caret(area_.offset_at(place.x(), place.y()), extend); });
    }
    post_mouse(front_, text_->control(), EventKind::MouseDown, *event);
}

void TextWidget::mouseMoveEvent(QMouseEvent* event)
{
    if (!dragging_) return;
    drag_position_ = event->pos();
    if (viewport()->rect().contains(drag_position_)) {
        drag_timer_.stop();
        drag_to(drag_position_);
    } else if (!drag_timer_.isActive()) {
        drag_timer_.start(drag_interval, this);
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
    front_.queue.submit([this, offset] { move_caret(offset, true); });
}

void TextWidget::mouseReleaseEvent(QMouseEvent* event)
{
    const bool was_dragging = dragging_ && event->button() == Qt::LeftButton;
    if (was_dragging) {
        dragging_ = false;
        drag_timer_.stop();
    }
    post_mouse(front_, text_->control(), EventKind::MouseUp, *event);
    if (was_dragging) front_.queue.post({EventKind::Click, text_->control()});
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
    front_.queue.post({EventKind::DblClick, text_->control()});
}

void TextWidget::contextMenuEvent(QContextMenuEvent* event)
{
    take_context_menu(front_, text_->control(), *event);
}

} // namespace tarvik

#include "desktop/text_view/text_widget.h"

#include "desktop/text_view/text_accessible.h"

#include <QApplication>
#include <QScrollBar>
#include <QStyleHints>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace tarvik {

namespace {

constexpr int caret_width = 2;
constexpr double wheel_step = 120; // what a notch of the wheel tells
constexpr int rows_a_notch = 3;
// The horizontal bar counts in these, so that the longest line fits into its range.
constexpr double bar_unit = 8;

// Whether two pieces are of one buffer. Equal texts of other buffers count as different.
bool same_piece(const PaneText::Piece& a, const PaneText::Piece& b)
{
    if (a.index() != b.index()) return false;
    const auto* text = std::get_if<SharedText>(&a);
    if (!text) return std::get<1>(a) == std::get<1>(b);
    const auto& other = std::get<SharedText>(b);
    return text->view.data() == other.view.data() && text->view.size() == other.view.size();
}

// Bars in the pane's own colour could not be told from it.
void colour_bars(const QAbstractScrollArea& area)
{
    const QPalette common = QApplication::palette();
    QPalette palette;
    palette.setColor(QPalette::Button, common.color(QPalette::Mid));
    for (const auto role : {QPalette::Window, QPalette::Base}) palette.setColor(role, common.color(QPalette::Midlight));
    for (QScrollBar* bar : {area.verticalScrollBar(), area.horizontalScrollBar()}) bar->setPalette(palette);
}

} // namespace

TextWidget::TextWidget(Front& front, const FontSizes& fonts, TextControl& text, QWidget* parent)
    : QAbstractScrollArea(parent), front_(front), fonts_(fonts), text_(text), area_(fonts)
{
    setProperty("textWidget", true);
    setFrameShape(QFrame::StyledPanel);
    setAttribute(Qt::WA_NoMousePropagation);
    setAttribute(Qt::WA_InputMethodEnabled);
    setInputMethodHints(Qt::ImhMultiLine);
    setFocusPolicy(Qt::StrongFocus);
    setMinimumSize(1, 1);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setAutoFillBackground(false);
    colour_bars(*this);
    // With line breaking the bar counts characters, but its arrows and its paging go by rows.
    connect(verticalScrollBar(), &QScrollBar::actionTriggered, this, [this](int action) {
        const int rows = area_.breaks_lines() ? rows_of(action) : 0;
        if (rows == 0) return;
        area_.scroll_rows(rows);
        verticalScrollBar()->setSliderPosition(static_cast<int>(area_.top()));
        viewport()->update();
    });
    connect(&caret_timer_, &QTimer::timeout, this, [this] {
        caret_shows_ = !caret_shows_;
        viewport()->update(caret_rectangle().toAlignedRect());
    });
    connect(&drag_timer_, &QTimer::timeout, this, [this] { drag_to(drag_position_); });
    forget_accessible(*this);
}

void TextWidget::show_model()
{
    stale_ = true;
    if (isVisible()) refresh();
}

void TextWidget::lay_anew()
{
    area_.lay_rows();
    show_scroll_bars();
}

void TextWidget::add_ruler(ColumnGuide guide)
{
    ruler_ = new Ruler(area_, std::move(guide), this);
    area_.heading_width = [ruler = ruler_](int column) { return ruler->width_wanted(column); };
    lay_anew();
}

void TextWidget::set_wraps_prose(bool wraps)
{
    area_.set_wraps_prose(wraps);
    show_scroll_bars();
}

void TextWidget::show_line_numbers(bool shown)
{
    if (shown == (numbers_ != nullptr)) return;
    delete std::exchange(numbers_, shown ? new LineNumbers(area_, this) : nullptr);
    if (numbers_) numbers_->show();
    show_ruler();
}

void TextWidget::update_ruler()
{
    if (ruler_) ruler_->update();
}

void TextWidget::show_ruler()
{
    const bool wanted = ruler_ && ruler_->is_wanted();
    const int height = wanted ? ruler_->wanted_height() : 0;
    const QMargins margins(numbers_ ? numbers_->wanted_width() : 0, height + room_above_, 0, 0);
    if (viewportMargins() != margins) setViewportMargins(margins);
    const QRect view = viewport()->geometry();
    if (numbers_) {
        numbers_->setGeometry(view.left() - margins.left(), view.top(), margins.left(), view.height());
        numbers_->update();
    }
    if (!ruler_) return;
    ruler_->setVisible(wanted);
    ruler_->setGeometry(view.left(), view.top() - height, view.width(), height);
    ruler_->update();
}

void TextWidget::refresh()
{
    if (!std::exchange(stale_, false)) return;
    PaneText content = text_.content();
    const auto& pieces = content.pieces();
    const auto& shown = shown_text_.pieces();
    const auto [changed, before] = std::ranges::mismatch(pieces, shown, same_piece);
    const bool new_text = changed != pieces.end() || before != shown.end();
    if (new_text) {
        shows_selection_ = false;
        const bool stays = editing_ || changed != pieces.begin();
        if (!editing_) undo_.clear();
        shown_text_ = content;
        sought_.count_anew();
        area_.set_text(std::move(content), stays);
    }
    const auto* const pane = dynamic_cast<const Pane*>(&text_);
    area_.set_look(pane ? TextLook{pane->marks(), pane->text_font_size(), pane->line_breaking}
                        : TextLook{{}, 0, breaks_lines_});
    const Selection selection = text_.selection();
    const bool moved =
        selection.start.offset() != selection_start() || selection.length != selection_end() - selection_start();
    if (moved) {
        anchor_ = selection.start.offset();
        caret_ = anchor_ + selection.length;
    }
    const bool whole_text = selection.length > 0 && selection.length == area_.lines().size();
    if (editing_ || (moved && !whole_text)) area_.bring_into_view(place_in_view(), !editing_);
    show_scroll_bars();
    blink();
}

void TextWidget::show_scroll_bars()
{
    setting_bars_ = true;
    QScrollBar& vertical = *verticalScrollBar();
    const std::size_t last = area_.last_top(), top = area_.top();
    const bool in_rows = !area_.breaks_lines();
    const TextLines& lines = area_.lines();
    const auto value = [&](std::size_t offset) { return static_cast<int>(in_rows ? lines.line_at(offset) : offset); };
    vertical.setRange(0, value(last));
    const auto& shown = area_.shown();
    const auto page = in_rows ? static_cast<std::size_t>(area_.whole_rows()) : shown.back().row.end - top;
    vertical.setPageStep(std::max(1, static_cast<int>(page)));
    vertical.setValue(value(top));
    QScrollBar& horizontal = *horizontalScrollBar();
    const double hidden = in_rows ? std::max(0.0, area_.widest() - area_.width()) : 0;
    horizontal.setRange(0, static_cast<int>(std::ceil(hidden / bar_unit)));
    horizontal.setPageStep(std::max(1, static_cast<int>(area_.width() / bar_unit)));
    horizontal.setSingleStep(4);
    horizontal.setValue(static_cast<int>(std::ceil(area_.left() / bar_unit)));
    setting_bars_ = false;
    show_ruler();
    viewport()->update();
}

void TextWidget::scrollContentsBy(int, int)
{
    if (setting_bars_) return;
    area_.set_left(horizontalScrollBar()->value() * bar_unit);
    const auto place = static_cast<std::size_t>(verticalScrollBar()->value());
    const std::size_t offset = area_.breaks_lines() ? place : area_.lines().line_start(place);
    if (offset != area_.top()) area_.scroll_to(offset);
    show_scroll_bars(); // a wider row may have come into view
}

// How many rows down a key goes, or what is done to the bar; 0 for any other.
int TextWidget::rows_of(int step) const
{
    const int page = std::max(1, area_.whole_rows() - 1);
    switch (step) {
    case Qt::Key_Up:
    case QAbstractSlider::SliderSingleStepSub: return -1;
    case Qt::Key_Down:
    case QAbstractSlider::SliderSingleStepAdd: return 1;
    case Qt::Key_PageUp:
    case QAbstractSlider::SliderPageStepSub: return -page;
    case Qt::Key_PageDown:
    case QAbstractSlider::SliderPageStepAdd: return page;
    default: return 0;
    }
}

void TextWidget::wheelEvent(QWheelEvent* event)
{
    if (event->modifiers().testFlag(Qt::ControlModifier)) { // the window zooms
        event->ignore();
        return;
    }
    const QPoint turned = event->angleDelta();
    if (turned.x() != 0 || event->modifiers().testFlag(Qt::ShiftModifier)) {
        QAbstractScrollArea::wheelEvent(event);
        return;
    }
    wheel_ += turned.y() * rows_a_notch / wheel_step;
    const int rows = static_cast<int>(wheel_);
    wheel_ -= rows;
    if (rows != 0) area_.scroll_rows(-rows);
    show_scroll_bars();
    event->accept();
}

void TextWidget::resizeEvent(QResizeEvent*)
{
    area_.set_size(viewport()->width(), viewport()->height());
    show_scroll_bars();
}

void TextWidget::showEvent(QShowEvent* event)
{
    QAbstractScrollArea::showEvent(event);
    refresh();
}

// Behind the last line end, where that shows as a sign, the caret stands beside the sign: a box of one line would show
// nothing otherwise.
std::size_t TextWidget::place_in_view() const
{
    const TextLines& lines = area_.lines();
    if (!shows_line_ends_ || caret_ == 0 || caret_ < lines.size()) return caret_;
    const char32_t last = lines.at(caret_ - 1);
    return last == U'\n' || last == U'\r' ? left_of(caret_) : caret_;
}

QRectF TextWidget::caret_rectangle() const
{
    const std::size_t place = place_in_view();
    const double sign = place == caret_ ? 0 : fonts_.size(0).width_of(U'↵');
    for (const TextArea::ShownRow& shown : area_.shown()) {
        const Row& row = shown.row;
        const bool here = place >= row.start && (place < row.end || (row.ends_line() && place == row.end));
        if (here) return {area_.x_of(row, place) + sign - 1, shown.y, caret_width, row.height};
    }
    return {};
}

void TextWidget::blink()
{
    const int time = QApplication::styleHints()->cursorFlashTime();
    caret_shows_ = hasFocus();
    if (hasFocus() && time > 1) caret_timer_.start(time / 2);
    else caret_timer_.stop();
}

bool TextWidget::event(QEvent* event)
{
    const bool done = QAbstractScrollArea::event(event);
    if (event->type() == QEvent::PaletteChange) colour_bars(*this);
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) {
        blink();
        update();
        viewport()->update();
    }
    return done;
}

} // namespace tarvik

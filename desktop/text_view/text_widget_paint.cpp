#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_widget.h"

#include <QLocale>
#include <QPainter>

#include <algorithm>

/// What a text view shows: its characters, the selection, and the places that are sought.
namespace tarvik {

namespace {

constexpr double line_end_width = 6; // what a selected line end shows as
constexpr std::size_t longest_run = 48;

bool is_in(const PlacedCharacter& placed, TextRange range)
{
    return placed.offset >= range.start && placed.offset < range.end;
}

bool shows(char32_t character)
{
    return character > U' ' && character != 0x7f;
}

// Characters that can be drawn in one go: of one look and of one kind, so that the toolkit's widths and ours agree.
bool go_together(const PlacedCharacter& a, const PlacedCharacter& b, TextRange selected)
{
    constexpr char32_t plain = 0x7f;
    return shows(b.character) && a.mark == b.mark && (a.character < plain) == (b.character < plain) &&
           is_in(a, selected) == is_in(b, selected);
}

} // namespace

void TextWidget::paint_run(QPainter& painter, std::span<const PlacedCharacter> run, QPointF place, bool selected) const
{
    Text text;
    for (const PlacedCharacter& placed : run) text += placed.character;
    const Mark* mark = run.front().mark;
    const QColor ink = selected ? palette().color(QPalette::HighlightedText)
                       : mark   ? readable(to_qt(mark->colour), palette().color(QPalette::Base))
                                : palette().color(QPalette::Text);
    painter.setPen(ink);
    QFont font = fonts_.size(run.front().points).font;
    font.setUnderline(mark != nullptr); // the colour alone is hard to tell for some
    painter.setFont(font);
    painter.drawText(place, to_qt(text));
}

void TextWidget::paint_characters(QPainter& painter, const TextArea::ShownRow& shown, TextRange selected) const
{
    const double shift = TextArea::margin - area_.left();
    const auto characters = area_.rows().between(shown.row, -shift, area_.left() + area_.width());
    const std::span<const PlacedCharacter> all(characters);
    for (std::size_t i = 0, end = 1; i < all.size(); i = end++) {
        if (!shows(all[i].character)) continue;
        while (end < all.size() && end - i < longest_run && go_together(all[i], all[end], selected)) ++end;
        paint_run(painter, all.subspan(i, end - i), {all[i].x + shift, shown.y + shown.row.ascent},
                  is_in(all[i], selected));
    }
}

void TextWidget::paint_range(QPainter& painter, const TextArea::ShownRow& shown, TextRange range,
                             const QColor& colour) const
{
    const Row& row = shown.row;
    if (range.end <= row.start || range.start > row.end || range.start == range.end) return;
    // A place far to the left of the view needs no exact x.
    const double from = range.start <= row.start ? TextArea::margin - area_.left() : area_.x_of(row, range.start);
    const bool with_line_end = row.ends_line() && range.end > row.end;
    const double to = area_.x_of(row, range.end) + (with_line_end ? line_end_width : 0);
    const double left = std::max(from, -1.0);
    painter.fillRect(QRectF(left, shown.y, std::min(to, area_.width()) - left, row.height), colour);
}

// What an input method is putting together, over the text at the caret.
void TextWidget::paint_preedit(QPainter& painter, const QRectF& caret) const
{
    QFont font = fonts_.size(0).font;
    font.setUnderline(true);
    painter.setFont(font);
    const QRectF place(caret.left(), caret.top(), QFontMetricsF(font).horizontalAdvance(preedit_) + 2, caret.height());
    painter.fillRect(place, palette().color(QPalette::AlternateBase));
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(QPointF(place.left() + 1, place.top() + fonts_.size(0).ascent), preedit_);
}

void TextWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(viewport());
    painter.fillRect(viewport()->rect(), palette().color(QPalette::Base));
    // Without the focus a selection does not hide what it lies on, such as the match that was marked last.
    const TextRange selected = hasFocus() || shows_selection_ ? this->selected() : TextRange{};
    const std::vector<TextRange> found = found_in_view();
    for (const TextArea::ShownRow& shown : area_.shown()) {
        for (const TextRange& place : found) paint_range(painter, shown, place, palette().color(found_role));
        paint_range(painter, shown, selected, palette().color(QPalette::Highlight));
        paint_characters(painter, shown, selected);
    }
    painter.setFont(fonts_.size(0).font);
    painter.setPen(palette().color(QPalette::Mid).darker());
    for (const auto& [row, y] : area_.shown()) // a sign at the end of each line but the last
        if (shows_line_ends_ && row.ends_line() && row.line_end < area_.lines().size())
            painter.drawText(QPointF(area_.x_of(row, row.end), y + row.ascent), "↵");
    const QRectF caret = caret_rectangle();
    if (caret.isNull() || !hasFocus()) return;
    if (!preedit_.isEmpty()) paint_preedit(painter, caret);
    else if (caret_shows_) painter.fillRect(caret, palette().color(QPalette::Text));
}

void TextWidget::seek(const Sought& sought)
{
    refresh();
    sought_ = sought;
    viewport()->update();
}

QString TextWidget::find(bool forward)
{
    refresh();
    const auto found = sought_.next(area_.lines(), forward ? selection_end() : selection_start(), forward);
    if (!found) return {};
    select_and_show(found->start, found->end);
    shows_selection_ = true;
    bool is_complete = false;
    return count_places(is_complete);
}

QString TextWidget::count_places(bool& is_complete)
{
    is_complete = !sought_.count_on(area_.lines());
    const auto grouped = [](std::size_t number) { return QLocale::c().toString(static_cast<qulonglong>(number)); };
    const std::size_t number = sought_.number(selection_start());
    const QString all = grouped(sought_.count()) + (is_complete ? "" : "…");
    return number == 0 ? all : grouped(number) + " / " + all;
}

// Of a row that is much longer than the view only the part that shows is looked through.
std::vector<TextRange> TextWidget::found_in_view() const
{
    constexpr std::size_t around = 1000;
    std::vector<TextRange> found;
    if (sought_.is_empty()) return found;
    for (const auto& [row, y] : area_.shown()) {
        const std::size_t left = area_.rows().offset_at(row, area_.left() - TextArea::margin);
        const std::size_t right = area_.rows().offset_at(row, area_.left() + area_.width());
        const std::size_t from = std::max(row.start, left - std::min(left, around));
        for (const TextRange& place : sought_.places(area_.lines(), from, std::min(row.end, right + 1)))
            found.push_back(place);
    }
    return found;
}

QString TextWidget::selected_line() const
{
    Text selected;
    area_.lines().append_to(selection_start(), std::min<std::size_t>(selection_end() - selection_start(), 200),
                            selected);
    return to_qt(TextView(selected).substr(0, std::min(selected.find_first_of(U"\r\n"), selected.size())));
}

QString TextWidget::word_at_hand()
{
    if (selection_start() == selection_end()) select_word(caret_);
    return selected_line().trimmed();
}

void TextWidget::show_place(std::size_t offset)
{
    refresh();
    area_.scroll_to(offset);
    show_scroll_bars();
}

void TextWidget::make_room(int height)
{
    room_above_ = height;
    show_ruler();
}

bool TextWidget::scroll_by_key(int key)
{
    const int rows = rows_of(key);
    if (rows == 0) return false;
    refresh();
    area_.scroll_rows(rows);
    show_scroll_bars();
    return true;
}

} // namespace tarvik

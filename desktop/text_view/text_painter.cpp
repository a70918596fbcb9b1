#include "desktop/text_view/text_painter.h"

#include "desktop/look/qt_text.h"

#include <QPainter>

namespace tarvik {

namespace {

constexpr double line_end_width = 6; // what a selected line end shows as
constexpr std::size_t longest_run = 48;

bool is_selected(const PlacedCharacter& placed, TextRange selected)
{
    return placed.offset >= selected.start && placed.offset < selected.end;
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
           is_selected(a, selected) == is_selected(b, selected);
}

void paint_run(QPainter& painter, std::span<const PlacedCharacter> run, double x, double base_line, bool selected,
               const PaneFonts& fonts, const QPalette& palette)
{
    Text text;
    for (const PlacedCharacter& placed : run) text += placed.character;
    const Mark* mark = run.front().mark;
    const QColor ink = selected ? palette.color(QPalette::HighlightedText)
                       : mark   ? readable(to_qt(mark->colour), palette.color(QPalette::Base))
                                : palette.color(QPalette::Text);
    painter.setPen(ink);
    QFont font = fonts.font(run.front().points);
    font.setUnderline(mark != nullptr); // the colour alone is hard to tell for some
    painter.setFont(font);
    painter.drawText(QPointF(x, base_line), to_qt(text));
}

void paint_characters(QPainter& painter, const TextArea& area, const TextArea::ShownRow& shown, const PaneFonts& fonts,
                      TextRange selected, const QPalette& palette)
{
    const double shift = TextArea::margin - area.left();
    const auto characters = area.rows().between(shown.row, area.left() - TextArea::margin, area.left() + area.width());
    const std::span<const PlacedCharacter> all(characters);
    for (std::size_t i = 0; i < all.size();) {
        if (!shows(all[i].character)) {
            ++i;
            continue;
        }
        std::size_t end = i + 1;
        while (end < all.size() && end - i < longest_run && go_together(all[i], all[end], selected)) ++end;
        paint_run(painter, all.subspan(i, end - i), all[i].x + shift, shown.y + shown.row.ascent,
                  is_selected(all[i], selected), fonts, palette);
        i = end;
    }
}

void paint_selection(QPainter& painter, const TextArea& area, const TextArea::ShownRow& shown, TextRange selected,
                     const QColor& colour)
{
    const Row& row = shown.row;
    if (selected.end <= row.start || selected.start > row.end || selected.start == selected.end) return;
    // A place far to the left of the view needs no exact x.
    const double left = selected.start <= row.start ? TextArea::margin - area.left() : area.x_of(row, selected.start);
    const bool with_line_end = row.ends_line() && selected.end > row.end;
    const double right = area.x_of(row, selected.end) + (with_line_end ? line_end_width : 0);
    painter.fillRect(
        QRectF(std::max(left, -1.0), shown.y, std::min(right, area.width()) - std::max(left, -1.0), row.height),
        colour);
}

} // namespace

void paint_text(QPainter& painter, const TextArea& area, const PaneFonts& fonts, TextRange selected,
                std::span<const TextRange> found, const QPalette& palette)
{
    for (const TextArea::ShownRow& shown : area.shown()) {
        for (const TextRange& place : found) paint_selection(painter, area, shown, place, palette.color(found_role));
        paint_selection(painter, area, shown, selected, palette.color(QPalette::Highlight));
        paint_characters(painter, area, shown, fonts, selected, palette);
    }
}

void paint_line_ends(QPainter& painter, const TextArea& area, const PaneFonts& fonts, const QPalette& palette)
{
    painter.setFont(fonts.font(0));
    painter.setPen(palette.color(QPalette::Mid).darker());
    for (const TextArea::ShownRow& shown : area.shown()) {
        const Row& row = shown.row;
        if (row.ends_line() && row.line_end < area.lines().size())
            painter.drawText(QPointF(area.x_of(row, row.end), shown.y + row.ascent), "↵");
    }
}

void paint_preedit(QPainter& painter, const QString& text, const QRectF& caret, const PaneFonts& fonts,
                   const QPalette& palette)
{
    QFont font = fonts.font(0);
    font.setUnderline(true);
    painter.setFont(font);
    const QRectF place(caret.left(), caret.top(), QFontMetricsF(font).horizontalAdvance(text) + 2, caret.height());
    painter.fillRect(place, palette.color(QPalette::AlternateBase));
    painter.setPen(palette.color(QPalette::Text));
    painter.drawText(QPointF(place.left() + 1, place.top() + fonts.size(0).ascent), text);
}

} // namespace tarvik

#pragma once

#include "desktop/look/pane_fonts.h"
#include "desktop/text_view/text_area.h"

#include <QPalette>
#include <QRectF>
#include <QString>

class QPainter;

namespace tarvik {

/// Offsets of the selected characters: from the first, to the one behind the last.
struct SelectedRange {
    std::size_t start, end;
};

void paint_text(QPainter& painter, const TextArea& area, const PaneFonts& fonts, SelectedRange selected,
                const QPalette& palette);
/// A sign at the end of each line but the last.
void paint_line_ends(QPainter& painter, const TextArea& area, const PaneFonts& fonts, const QPalette& palette);
/// What an input method is putting together, over the text at the caret.
void paint_preedit(QPainter& painter, const QString& text, const QRectF& caret, const PaneFonts& fonts,
                   const QPalette& palette);

} // namespace tarvik

#pragma once

#include "desktop/look/pane_fonts.h"
#include "desktop/text_view/text_area.h"
#include "desktop/text_view/text_search.h"

#include <QPalette>
#include <QRectF>
#include <QString>

#include <span>

class QPainter;

namespace tarvik {

/// `found` is marked under the text, and `selected` over it.
void paint_text(QPainter& painter, const TextArea& area, const PaneFonts& fonts, TextRange selected,
                std::span<const TextRange> found, const QPalette& palette);
/// A sign at the end of each line but the last.
void paint_line_ends(QPainter& painter, const TextArea& area, const PaneFonts& fonts, const QPalette& palette);
/// What an input method is putting together, over the text at the caret.
void paint_preedit(QPainter& painter, const QString& text, const QRectF& caret, const PaneFonts& fonts,
                   const QPalette& palette);

} // namespace tarvik

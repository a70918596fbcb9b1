#pragma once

class QColor;
class QPainter;
class QRect;
class QStyle;

namespace tarvik {

/// The shape of the controls: each in its own colour from the model, with a border that tells which has the focus.
QStyle* new_control_style();

/// A rounded area with a border; the border is strong around what has the focus.
void paint_box(QPainter& painter, const QRect& area, const QColor& fill, bool focus);

} // namespace tarvik

#pragma once

#include <QProxyStyle>

namespace tarvik {

/// The shape of the controls: each in its own colour from the model, with a border that tells which has the focus.
class ControlStyle final : public QProxyStyle {
public:
    ControlStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
};

/// A rounded area with a border; the border is strong around what has the focus.
void paint_box(QPainter& painter, const QRect& area, const QColor& fill, bool focus);

} // namespace tarvik

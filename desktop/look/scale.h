#pragma once

#include <QRect>
#include <QSize>

#include "mainwindow/control.h"

namespace tarvik {

/// How large the model shows: its twips and points as pixels. The windows of the program share one.
struct Scale {
    double dots_per_inch = 96;
    double zoom = 1;

    double pixels(double twips) const { return twips / 1440 * dots_per_inch * zoom; }
    double twips(double pixels_) const { return pixels_ * 1440 / dots_per_inch / zoom; }
    double font_pixels(double points) const { return points / 72 * dots_per_inch * zoom; }
    /// Neighbours that touch in the model touch on the screen.
    QRect rectangle(double left, double top, double width, double height) const
    {
        const int x = qRound(pixels(left)), y = qRound(pixels(top));
        return {x, y, qRound(pixels(left + width)) - x, qRound(pixels(top + height)) - y};
    }
    QRect rectangle(const Control& control) const
    {
        return rectangle(control.left(), control.top(), control.width(), control.height());
    }
    QSize size(const Control& control) const
    {
        return {qRound(pixels(control.width())), qRound(pixels(control.height()))};
    }
};

} // namespace tarvik

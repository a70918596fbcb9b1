#pragma once

#include "platform/files.h"

#include <QPixmap>

class QPainter;

namespace tarvik {

/// The picture behind the controls. One that is missing or broken is no picture.
class Backdrop {
public:
    Backdrop() = default;
    explicit Backdrop(const Files& files);

    /// Draws the picture stretched over the whole area, if there is one.
    void paint(QPainter& painter, QSize area, double device_pixels);

private:
    QImage picture_;
    QPixmap stretched_; // for the area that was painted last
};

} // namespace tarvik

#pragma once

#include "platform/files/files.h"

#include <QPixmap>

class QPainter;

namespace tarvik {

/// The picture behind the controls. One that is missing or broken is no picture. Only the stretched picture is kept:
/// the file is looked for and loaded again for every size of the window.
class Backdrop {
public:
    Backdrop() = default;
    explicit Backdrop(const Files& files) : files_(&files) {}

    /// Draws the picture stretched over the whole area, if there is one.
    void paint(QPainter& painter, QSize area, double device_pixels);

private:
    const Files* files_ = nullptr; // without files there is no picture
    QSize size_;                   // that the file was last loaded for
    QPixmap stretched_;
};

} // namespace tarvik

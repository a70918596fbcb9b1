#include "desktop/backdrop.h"

#include "platform/failure.h"

#include <QPainter>

namespace tarvik {

Backdrop::Backdrop(const Files& files)
{
    try {
        const std::u32string_view name = U"123.jpg";
        if (files.file_exists(name)) picture_.load(QString::fromStdString(files.resolve(name).string()));
    } catch (const Failure&) {
        picture_ = {};
    }
}

void Backdrop::paint(QPainter& painter, QSize area, double device_pixels)
{
    if (picture_.isNull()) return;
    const QSize pixels = area * device_pixels;
    if (stretched_.size() != pixels)
        stretched_ = QPixmap::fromImage(picture_.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    painter.drawPixmap(QRect(QPoint(0, 0), area), stretched_);
}

} // namespace tarvik

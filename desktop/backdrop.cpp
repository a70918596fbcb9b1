#include "desktop/backdrop.h"

#include "platform/failure.h"

#include <QImageReader>
#include <QPainter>

namespace tarvik {

Backdrop::Backdrop(const Files& files)
{
    try {
        const std::u32string_view name = U"123.jpg";
        if (files.file_exists(name)) path_ = QString::fromStdString(files.resolve(name).string());
    } catch (const Failure&) {
        path_.clear();
    }
}

void Backdrop::paint(QPainter& painter, QSize area, double device_pixels)
{
    if (path_.isEmpty()) return;
    const QSize pixels = (QSizeF(area) * device_pixels).toSize();
    if (size_ != pixels) {
        size_ = pixels;
        QImageReader reader(path_);
        reader.setScaledSize(pixels);
        stretched_ = QPixmap::fromImage(reader.read());
    }
    if (!stretched_.isNull()) painter.drawPixmap(QRect(QPoint(0, 0), area), stretched_);
}

} // namespace tarvik

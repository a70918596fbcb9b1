#include "desktop/windows/backdrop.h"

#include "platform/failure.h"
#include "platform/files/path_text.h"

#include <QImageReader>
#include <QPainter>

namespace tarvik {

namespace {

/// Empty when there is no picture.
QString picture_path(const Files* files)
{
    if (!files) return {};
    try {
        const std::u32string_view name = U"123.jpg";
        return files->file_exists(name) ? QString::fromStdString(utf8_of(files->resolve(name))) : QString();
    } catch (const Failure&) {
        return {};
    }
}

} // namespace

void Backdrop::paint(QPainter& painter, QSize area, double device_pixels)
{
    const QSize pixels = (QSizeF(area) * device_pixels).toSize();
    if (size_ != pixels) {
        size_ = pixels;
        stretched_ = {};
        if (const QString path = picture_path(files_); !path.isEmpty()) {
            QImageReader reader(path);
            reader.setScaledSize(pixels);
            stretched_ = QPixmap::fromImage(reader.read());
        }
    }
    if (!stretched_.isNull()) painter.drawPixmap(QRect(QPoint(0, 0), area), stretched_);
}

} // namespace tarvik

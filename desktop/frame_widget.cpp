#include "desktop/frame_widget.h"

#include "desktop/control_style.h"

#include <QPainter>

namespace tarvik {

namespace {

constexpr int caption_left = 10, caption_top = 3;

} // namespace

FrameWidget::FrameWidget(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_NoMousePropagation);
}

void FrameWidget::set_caption(const QString& caption)
{
    caption_ = caption;
    setAccessibleName(caption);
    update();
}

void FrameWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paint_box(painter, rect(), palette().color(QPalette::Window), false);
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(rect().adjusted(caption_left, caption_top, -caption_left, 0), Qt::AlignLeft | Qt::AlignTop,
                     caption_);
}

} // namespace tarvik

#include "desktop/look/window_icon.h"

#include <QPainter>
#include <QPixmap>

namespace tarvik {

namespace {

constexpr double drawn_size = 128;

void draw(QPainter& painter)
{
    const QColor edge(143, 132, 85), strong(138, 61, 0);
    const auto box = [&](const QRectF& area, double radius, const QColor& fill, const QColor& line, double width) {
        painter.setPen(QPen(line, width));
        painter.setBrush(fill);
        painter.drawRoundedRect(area, radius, radius);
    };
    box({6, 6, 116, 116}, 18, {232, 227, 174}, strong, 6);
    box({26, 24, 76, 54}, 4, {250, 248, 230}, edge, 4);
    for (const double y : {42.0, 60.0}) painter.drawLine(QPointF(26, y), QPointF(102, y));
    painter.drawLine(QPointF(55, 24), QPointF(55, 78));
    painter.fillRect(QRectF(57, 44, 43, 14), QColor(92, 107, 44));
    box({26, 90, 50, 16}, 4, {215, 198, 149}, edge, 4);
    painter.setPen(QPen(strong, 5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawLine(QPointF(84, 98), QPointF(100, 98));
    const QPointF head[] = {{94, 91}, {101, 98}, {94, 105}};
    painter.drawPolyline(head, 3);
}

} // namespace

QIcon window_icon()
{
    QIcon icon;
    for (const int size : {16, 32, 48, 128}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / drawn_size, size / drawn_size);
        draw(painter);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}

} // namespace tarvik

#include "desktop/text_view/ruler.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace tarvik {

namespace {

constexpr int room = 4; // above and below the labels, together

} // namespace

Ruler::Ruler(const TextArea& area, ColumnGuide guide, QWidget* parent)
    : QWidget(parent), area_(area), guide_(std::move(guide))
{
    setObjectName("ruler");
    setCursor(Qt::PointingHandCursor);
    setAttribute(Qt::WA_NoMousePropagation);
    setAccessibleName("列号与列名");
}

bool Ruler::is_wanted() const
{
    return area_.is_table() && guide_.fits(static_cast<int>(area_.stops().count()) - 1 + area_.first_column());
}

int Ruler::wanted_height() const
{
    return fontMetrics().height() + room;
}

double Ruler::width_wanted(int column) const
{
    return column > 0 && is_wanted() ? fontMetrics().horizontalAdvance(label(column)) + 3 * room : 0;
}

double Ruler::left_of(int column) const
{
    return TextArea::margin - area_.left() +
           area_.stops().start(static_cast<std::size_t>(column - area_.first_column()));
}

QString Ruler::label(int column) const
{
    const QString heading = guide_.heading(column);
    return heading.isEmpty() ? QString::number(column) : QString("%1 %2").arg(column).arg(heading);
}

int Ruler::column_at(double x) const
{
    const int last = area_.first_column() + static_cast<int>(area_.stops().count()) - 1;
    int column = 1;
    while (column < last && left_of(column + 1) <= x) ++column;
    return column;
}

bool Ruler::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip) return QWidget::event(event);
    const auto* help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), "第" + label(column_at(help->pos().x())) + "列，单击填入列次框", this);
    return true;
}

void Ruler::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
        guide_.picked(column_at(event->position().x()));
}

void Ruler::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::AlternateBase));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(0, height() - 1, width(), height() - 1);
    const int end = area_.first_column() + static_cast<int>(area_.stops().count());
    for (int column = 1; column < end; ++column) {
        const double left = left_of(column), right = left_of(column + 1);
        if (right < 0) continue;
        if (left > width()) break;
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawLine(QPointF(left - 3, 2), QPointF(left - 3, height() - 3));
        painter.setPen(palette().color(QPalette::Text));
        const double space = right - left - room;
        const QString text = fontMetrics().elidedText(label(column), Qt::ElideRight, static_cast<int>(space));
        // A column too narrow for its heading shows its number, one too narrow for that nothing.
        const QString number = QString::number(column);
        const bool fits = text.startsWith(number);
        if (!fits && fontMetrics().horizontalAdvance(number) > right - left) continue;
        painter.drawText(QRectF(left, 0, right - left, height()), Qt::AlignLeft | Qt::AlignVCenter,
                         fits ? text : number);
    }
}

int LineNumbers::wanted_width() const
{
    const QString last = QString::number(std::max<std::size_t>(area_.lines().line_count(), 1000));
    return fontMetrics().horizontalAdvance(last) + 2 * room;
}

void LineNumbers::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::AlternateBase));
    painter.setPen(palette().color(QPalette::Text));
    for (const auto& [row, y] : area_.shown()) {
        if (row.start != row.line_start) continue;
        const QString number = QString::number(area_.lines().line_at(row.start) + 1);
        painter.drawText(QPointF(width() - room - fontMetrics().horizontalAdvance(number), y + row.ascent), number);
    }
}

} // namespace tarvik

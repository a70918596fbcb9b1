#pragma once

#include "desktop/text_view/text_area.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QToolTip>
#include <QWidget>

#include <algorithm>
#include <functional>

namespace tarvik {

/// What a ruler tells of columns, which count from 1, and what a click on one does.
struct ColumnGuide {
    std::function<QString(int)> heading;
    /// Whether a table of so many columns has the columns that the headings are for.
    std::function<bool(int)> fits;
    std::function<void(int)> picked;
};

inline constexpr int label_room = 4; // above and below the labels, together

/// The numbers and headings of a table's columns, over the view that shows them.
class Ruler final : public QWidget {
public:
    Ruler(const TextArea& area, ColumnGuide guide, QWidget* parent)
        : QWidget(parent), area_(area), guide_(std::move(guide))
    {
        setObjectName("ruler");
        setCursor(Qt::PointingHandCursor);
        setAttribute(Qt::WA_NoMousePropagation);
        setAccessibleName("列号与列名");
    }

    /// Whether the text is a table that the guide knows.
    bool is_wanted() const { return area_.is_table() && guide_.fits(last_column()); }
    int wanted_height() const { return fontMetrics().height() + label_room; }
    /// The left edge of a column, as the ruler shows it.
    double left_of(int column) const
    {
        return TextArea::margin - area_.left() +
               area_.stops().start(static_cast<std::size_t>(column - area_.first_column()));
    }
    /// The room that the label of a column takes; 0 while the ruler does not show.
    double width_wanted(int column) const
    {
        return column > 0 && is_wanted() ? fontMetrics().horizontalAdvance(label(column)) + 3 * label_room : 0;
    }

protected:
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip) return QWidget::event(event);
        const auto* help = static_cast<QHelpEvent*>(event);
        QToolTip::showText(help->globalPos(), "第" + label(column_at(help->pos().x())) + "列，单击填入列次框", this);
        return true;
    }
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::AlternateBase));
        painter.setPen(palette().color(QPalette::Mid));
        painter.drawLine(0, height() - 1, width(), height() - 1);
        for (int column = 1; column <= last_column(); ++column) {
            const double left = left_of(column), right = left_of(column + 1);
            if (right < 0) continue;
            if (left > width()) break;
            painter.setPen(palette().color(QPalette::Mid));
            painter.drawLine(QPointF(left - 3, 2), QPointF(left - 3, height() - 3));
            painter.setPen(palette().color(QPalette::Text));
            const double space = right - left - label_room;
            const QString text = fontMetrics().elidedText(label(column), Qt::ElideRight, static_cast<int>(space));
            // A column too narrow for its heading shows its number, one too narrow for that nothing.
            const QString number = QString::number(column);
            const bool fits = text.startsWith(number);
            if (!fits && fontMetrics().horizontalAdvance(number) > right - left) continue;
            painter.drawText(QRectF(left, 0, right - left, height()), Qt::AlignLeft | Qt::AlignVCenter,
                             fits ? text : number);
        }
    }
    void mouseReleaseEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton && rect().contains(event->pos()))
            guide_.picked(column_at(event->position().x()));
    }

private:
    int last_column() const { return area_.first_column() + static_cast<int>(area_.stops().count()) - 1; }
    QString label(int column) const
    {
        const QString heading = guide_.heading(column);
        return heading.isEmpty() ? QString::number(column) : QString("%1 %2").arg(column).arg(heading);
    }
    int column_at(double x) const
    {
        int column = 1;
        while (column < last_column() && left_of(column + 1) <= x) ++column;
        return column;
    }
    const TextArea& area_;
    ColumnGuide guide_;
};

/// The numbers of a text's lines, beside the view that shows them.
class LineNumbers final : public QWidget {
public:
    LineNumbers(const TextArea& area, QWidget* parent) : QWidget(parent), area_(area) {}
    int wanted_width() const
    {
        const QString last = QString::number(std::max<std::size_t>(area_.lines().line_count(), 1000));
        return fontMetrics().horizontalAdvance(last) + 2 * label_room;
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::AlternateBase));
        painter.setPen(palette().color(QPalette::Text));
        for (const auto& [row, y] : area_.shown()) {
            if (row.start != row.line_start) continue;
            const QString number = QString::number(area_.lines().line_at(row.start) + 1);
            painter.drawText(QPointF(width() - label_room - fontMetrics().horizontalAdvance(number), y + row.ascent),
                             number);
        }
    }

private:
    const TextArea& area_;
};

} // namespace tarvik

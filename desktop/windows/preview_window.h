#pragma once

#include "desktop/front/front.h"
#include "desktop/look/qt_text.h"

#include <QCloseEvent>
#include <QHelpEvent>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QStyle>
#include <QToolTip>

#include <algorithm>
#include <utility>

namespace tarvik {

/// Draws the sheet of a preview. What the design has written is tinted and names its row of the design.
class PreviewCanvas final : public QWidget {
public:
    PreviewCanvas(Front& front, QWidget* parent) : QWidget(parent), front_(front)
    {
        setObjectName("Form4.Preview.Canvas");
    }
    // Lays the sheet out anew.
    void show_model()
    {
        lefts_ = edges(preview().picture.widths, front_.scale);
        tops_ = edges(preview().picture.heights, front_.scale);
        resize(lefts_.back() + 1, tops_.back() + 1);
        update();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        if (lefts_.empty()) return;
        QPainter painter(this);
        painter.fillRect(rect(), Qt::white);
        painter.setPen(grid_);
        for (const int left : lefts_) painter.drawLine(left, 0, left, tops_.back());
        for (const int top : tops_) painter.drawLine(0, top, lefts_.back(), top);
        for (const PicturedCell& cell : preview().picture.cells)
            paint(painter, cell, std::ranges::any_of(preview().written, [&cell](const WrittenCell& written) {
                      return written.row == cell.row && written.column == cell.column;
                  }));
    }
    void mousePressEvent(QMouseEvent* event) override
    {
        if (!rect().contains(event->pos())) return;
        front_.queue.submit([this, cell = cell_at(event->pos())] {
            PreviewArea& area = front_.program.form4.Preview;
            area.picked = {cell.y(), cell.x()};
            Event click{EventKind::Click, area};
            front_.queue.send(click);
        });
    }
    bool event(QEvent* event) override
    {
        if (event->type() != QEvent::ToolTip || lefts_.empty()) return QWidget::event(event);
        const auto& help = dynamic_cast<QHelpEvent&>(*event);
        const QPoint cell = cell_at(help.pos());
        QString text = QString("%1 行 %2 列").arg(cell.y()).arg(cell.x());
        for (const WrittenCell& written : preview().written)
            if (written.row == cell.y() && written.column == cell.x()) text += "\n" + to_qt(written.design_row);
        QToolTip::showText(help.globalPos(), text, this);
        return true;
    }

private:
    const SheetPreview& preview() const { return front_.program.form4.Preview.contents(); }
    QRect place(const PicturedCell& cell) const
    {
        const auto left = static_cast<std::size_t>(cell.column - 1), top = static_cast<std::size_t>(cell.row - 1);
        const auto right = left + static_cast<std::size_t>(cell.columns),
                   bottom = top + static_cast<std::size_t>(cell.rows);
        return {QPoint(lefts_[left], tops_[top]), QPoint(lefts_[right], tops_[bottom])};
    }
    void paint(QPainter& painter, const PicturedCell& cell, bool is_written) const
    {
        const QRect area = place(cell);
        const CellLook& look = cell.look;
        if (look.fill || cell.rows > 1 || cell.columns > 1)
            painter.fillRect(area.adjusted(1, 1, -1, -1), look.fill ? colour(*look.fill) : QColor(Qt::white));
        if (is_written) painter.fillRect(area, tint_);
        draw_side(painter, look.left, area.topLeft(), area.bottomLeft());
        draw_side(painter, look.top, area.topLeft(), area.topRight());
        draw_side(painter, look.right, area.topRight(), area.bottomRight());
        draw_side(painter, look.bottom, area.bottomLeft(), area.bottomRight());
        if (cell.text.empty()) return;
        QFont font(to_qt(look.font));
        font.setPixelSize(std::max(1, qRound(front_.scale.font_pixels(look.points))));
        font.setBold(look.bold);
        font.setItalic(look.italic);
        painter.setFont(font);
        painter.setPen(colour(look.colour));
        painter.drawText(area.adjusted(text_margin, 0, -text_margin, 0), alignment(look), lines_to_qt(cell.text));
    }
    // Row and column at a point; of a merged range the first cell's.
    QPoint cell_at(QPoint point) const
    {
        for (const PicturedCell& cell : preview().picture.cells)
            if (place(cell).contains(point)) return {cell.column, cell.row};
        const auto number = [](const std::vector<int>& edges, int place) {
            return static_cast<int>(std::ranges::upper_bound(edges, place) - edges.begin());
        };
        return {number(lefts_, point.x()), number(tops_, point.y())};
    }

    static constexpr double twips_a_point = 20;
    static constexpr int text_margin = 3; // pixels

    static std::vector<int> edges(const std::vector<double>& points, const Scale& scale)
    {
        std::vector<int> result{0};
        double place = 0;
        for (const double length : points) result.push_back(qRound(scale.pixels((place += length) * twips_a_point)));
        return result;
    }
    static QColor colour(SheetColour value) { return QColor::fromRgb(value); }
    static void draw_side(QPainter& painter, const BorderLook& side, QPoint from, QPoint to)
    {
        if (side.width == 0) return;
        painter.setPen(QPen(colour(side.colour), side.width));
        painter.drawLine(from, to);
    }
    static int alignment(const CellLook& look)
    {
        const int side = look.alignment == AlignmentLook::Centre  ? Qt::AlignHCenter
                         : look.alignment == AlignmentLook::Right ? Qt::AlignRight
                                                                  : Qt::AlignLeft;
        return side | Qt::AlignVCenter | (look.wraps ? Qt::TextWordWrap : Qt::TextSingleLine);
    }

    const QColor tint_{255, 214, 102, 110}, grid_{214, 214, 214};
    Front& front_;
    std::vector<int> lefts_, tops_; // of columns and rows, and behind the last one
};

/// The window of the model's preview, which comes and goes with it, beside the designer.
class PreviewWindow final : public QScrollArea {
public:
    PreviewWindow(Front& front, const QWidget& designer)
        : front_(front), designer_(designer), canvas_(new PreviewCanvas(front, nullptr))
    {
        setObjectName("Form4.Preview");
        setWidget(canvas_);
        front_.mirror.add(
            front_.program.form4.Preview, nullptr, [this] { show_model(); }, true);
    }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        event->ignore(); // the model decides
        front_.queue.submit([this] { front_.program.form4.Preview.set_visible(false); });
    }

private:
    void show_model()
    {
        const PreviewArea& area = front_.program.form4.Preview;
        setWindowTitle(to_qt(area.caption()));
        canvas_->show_model();
        if (area.visible() == isVisible()) return;
        if (area.visible() && !std::exchange(placed_, true)) place();
        setVisible(area.visible());
    }
    // As large as the sheet, at the side of the screen that the designer leaves more of.
    void place()
    {
        const QRect free = screen()->availableGeometry();
        const QRect designer = designer_.frameGeometry();
        const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        resize((canvas_->size() + QSize(bar, bar)).boundedTo(free.size() * share_of_screen));
        const bool left = designer.left() - free.left() >= free.right() - designer.right();
        move(left ? std::max(free.left(), designer.left() - gap - width())
                  : std::min(free.right() - width(), designer.right() + gap),
             designer.top());
    }
    static constexpr double share_of_screen = 0.85; // at most
    static constexpr int gap = 8;                   // between windows

    Front& front_;
    const QWidget& designer_;
    bool placed_ = false;
    PreviewCanvas* canvas_;
};

} // namespace tarvik

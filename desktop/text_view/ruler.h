#pragma once

#include "desktop/text_view/text_area.h"

#include <QWidget>

#include <functional>

namespace tarvik {

/// What a ruler tells of columns, which count from 1, and what a click on one does.
struct ColumnGuide {
    std::function<QString(int)> heading;
    /// Whether a table of so many columns has the columns that the headings are for.
    std::function<bool(int)> fits;
    std::function<void(int)> picked;
};

/// The numbers and headings of a table's columns, over the view that shows them.
class Ruler final : public QWidget {
public:
    Ruler(const TextArea& area, ColumnGuide guide, QWidget* parent);

    /// Whether the text is a table that the guide knows.
    bool is_wanted() const;
    int wanted_height() const;
    /// The left edge of a column, as the ruler shows it.
    double left_of(int column) const;
    /// The room that the label of a column takes; 0 while the ruler does not show.
    double width_wanted(int column) const;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QString label(int column) const;
    int column_at(double x) const;
    const TextArea& area_;
    ColumnGuide guide_;
};

/// The numbers of a text's lines, beside the view that shows them.
class LineNumbers final : public QWidget {
public:
    LineNumbers(const TextArea& area, QWidget* parent) : QWidget(parent), area_(area) {}
    int wanted_width() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    const TextArea& area_;
};

} // namespace tarvik

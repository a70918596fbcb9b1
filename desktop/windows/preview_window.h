#pragma once

#include "desktop/front/front.h"

#include <QScrollArea>

namespace tarvik {

/// Draws the sheet of a preview. What the design has written is tinted and names its row of the design.
class PreviewCanvas final : public QWidget {
public:
    PreviewCanvas(Front& front, QWidget* parent);
    /// Lays the sheet out anew.
    void show_model();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    bool event(QEvent* event) override;

private:
    const SheetPreview& preview() const { return front_.program.form4.Preview.contents(); }
    QRect place(const PicturedCell& cell) const;
    void paint(QPainter& painter, const PicturedCell& cell, bool is_written) const;
    /// Row and column at a point; of a merged range the first cell's.
    QPoint cell_at(QPoint point) const;

    Front& front_;
    std::vector<int> lefts_, tops_; // of columns and rows, and behind the last one
};

/// The window around it, which comes and goes with the model's preview.
class PreviewWindow final : public QScrollArea {
public:
    PreviewWindow(Front& front, const QWidget& designer);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void show_model();
    void place();
    Front& front_;
    const QWidget& designer_;
    bool placed_ = false;
    PreviewCanvas* canvas_;
};

} // namespace tarvik

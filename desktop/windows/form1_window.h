#pragma once

#include "desktop/controls/control_maker.h"
#include "desktop/windows/form_window.h"
#include "desktop/windows/opening.h"
#include "desktop/windows/progress_line.h"

namespace tarvik {

/// The main window.
class Form1Window final : public FormWindow {
public:
    /// `scale` and `fonts` are those of `front`, which the window's size changes.
    Form1Window(Front& front, FocusTracker& focus, Backdrop& backdrop, Scale& scale, PaneFonts& fonts);

    LineBox& query_box() { return *query_box_; }
    /// Chooses how large the model shows on a screen of which this much is free. To be called when the model has its
    /// opening size, before the window shows.
    void fit_to_screen(QSize available);
    ProgressLine& progress() { return progress_; }

protected:
    void before_first_show() override;
    QSize picture_size() const override { return opening_.running() ? opening_.full() : size(); }
    void take_size(QSize size) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void make_boxes(ControlMaker& maker);
    void make_buttons(ControlMaker& maker);
    void make_frames(ControlMaker& maker);
    void set_tab_order();
    void set_zoom(double zoom);
    std::function<void()> to_query_box();

    Form1& form1_;
    Scale& scale_;
    PaneFonts& fonts_;
    FormLayout layout_;
    LineBox* query_box_ = nullptr;
    std::vector<TextWidget*> texts_;
    ProgressLine progress_;
    Opening opening_;
    QSizeF full_size_; // that the window opens with, in pixels without any zoom
    double largest_zoom_ = 1;
    bool pressed_ = false;
};

} // namespace tarvik

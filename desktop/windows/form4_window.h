#pragma once

#include "desktop/controls/control_maker.h"
#include "desktop/windows/form_window.h"

class QScrollArea;

namespace tarvik {

/// The report designer. What does not fit into the window is scrolled.
class Form4Window final : public FormWindow {
public:
    Form4Window(Front& front, FocusTracker& focus, Backdrop& backdrop, const QWidget& main_window);

    /// To be called when the zoom is known.
    void set_zoom();

protected:
    void before_first_show() override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void make_rows(ControlMaker& maker, QWidget& frame, int first, int last);
    void place();
    const QWidget& main_window_;
    FormLayout layout_;
    QScrollArea* scroll_area_ = nullptr;
};

} // namespace tarvik

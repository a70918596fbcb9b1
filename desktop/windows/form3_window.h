#pragma once

#include "desktop/controls/control_maker.h"
#include "desktop/windows/form_window.h"

namespace tarvik {

/// The window of column numbers and notes. It appears without taking the focus, so that keys can be typed on.
class Form3Window final : public FormWindow {
public:
    Form3Window(Front& front, FocusTracker& focus, Backdrop& backdrop, QWidget& main_window);

    /// To be called when the zoom is known.
    void set_zoom();

protected:
    void before_first_show() override;
    void appear() override;

private:
    QWidget& main_window_;
    FormLayout layout_;
    TextWidget* notes_ = nullptr;
};

} // namespace tarvik

#pragma once

#include "desktop/controls/form_layout.h"
#include "desktop/controls/line_box.h"
#include "desktop/controls/small_widgets.h"
#include "desktop/front/focus_tracker.h"
#include "desktop/text_view/text_widget.h"

class QLabel;

namespace tarvik {

/// Makes the widgets of a window: each stands in the window's layout, mirrors its control and tells of the focus.
class ControlMaker {
public:
    ControlMaker(Front& front, FocusTracker& focus, FormLayout& layout) : front_(front), focus_(focus), layout_(layout)
    {
    }

    /// `clicked` is called behind a click with the mouse.
    ButtonWidget& button(Control& control, FontRole role, QWidget& parent, std::function<void()> clicked = {});
    OptionWidget& option(OptionButton& control, QWidget& parent, std::function<void()> clicked);
    FrameWidget& frame(Control& control, QWidget& parent);
    QLabel& label(Control& control, FontRole role, QWidget& parent);
    LineBox& line_box(TextBox& box, FontRole role, QWidget& parent, bool context_menu = false);
    TextWidget& text(std::unique_ptr<ViewedText> text, FontRole role, QWidget& parent);

private:
    void enter(Control& control, QWidget& widget, FontRole role, std::function<void()> show);
    Front& front_;
    FocusTracker& focus_;
    FormLayout& layout_;
};

/// A control's name with its window and index, as widgets are called: "Form1.Text1(1)"; a window by its own alone.
QString widget_name(const Control& control);

} // namespace tarvik

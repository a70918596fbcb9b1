#pragma once

#include "desktop/controls/line_box.h"
#include "desktop/front/front.h"
#include "desktop/text_view/text_widget.h"

#include <functional>
#include <vector>

class QAbstractButton;
class QLabel;

namespace tarvik {

/// Twips, from the corner of the window or frame that the control stands in.
struct Place {
    double left, top, width, height;
    friend bool operator==(const Place&, const Place&) = default;
};

inline Place place_of(const Control& control)
{
    return {control.left(), control.top(), control.width(), control.height()};
}

/// The widgets of a window: makes them, mirrors their controls in them, and places them.
class ControlMaker {
public:
    /// `fit` may move a control from the place that the model gives.
    ControlMaker(Front& front, std::function<Place(const Control&)> fit) : front_(front), fit_(std::move(fit)) {}

    void place() const;
    void set_fonts() const;

    /// `clicked` is called behind a click with the mouse.
    QAbstractButton& button(Control& control, FontRole role, QWidget& parent, std::function<void()> clicked = {});
    QAbstractButton& option(OptionButton& control, QWidget& parent, std::function<void()> clicked);
    QWidget& frame(Control& control, QWidget& parent);
    QLabel& label(Control& control, FontRole role, QWidget& parent);
    LineBox& line_box(TextBox& box, FontRole role, QWidget& parent, bool context_menu = false);
    TextWidget& text(TextControl& text, const FontSizes& fonts, FontRole role, QWidget& parent);

private:
    void enter(Control& control, QWidget& widget, FontRole role, std::function<void()> show);
    struct Entry {
        const Control* control;
        QWidget* widget;
        FontRole role;
    };
    Front& front_;
    std::function<Place(const Control&)> fit_;
    std::vector<Entry> entries_;
};

/// A control's name with its window and index, as widgets are called: "Form1.Text1(1)"; a window by its own alone.
QString widget_name(const Control& control);

} // namespace tarvik

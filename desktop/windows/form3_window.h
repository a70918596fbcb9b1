#pragma once

#include "desktop/controls/control_maker.h"
#include "desktop/windows/form_window.h"

#include <map>

namespace tarvik {

/// The window of column numbers and notes. It appears without taking the focus, so that keys can be typed on.
class Form3Window final : public FormWindow {
public:
    /// The window's place decides on the scale of `front`.
    Form3Window(Front& front, QWidget& main_window);

    /// To be called when the zoom is known.
    void set_zoom();
    /// Shows beside each box the heading of the column that its number names.
    void show_headings();
    /// Puts a number into the box that has, or had last, the focus.
    void put_number(int number);
    /// Brings the window and the box that matters next to the front.
    void take_focus();

protected:
    void place() override;
    void before_first_show() override;
    void appear() override;
    QString title_addition() const override { return " · 列次、间隔与说明"; }
    void set_aside(bool aside) override { setVisible(!aside); }

private:
    PaneFonts fonts_;
    QWidget& main_window_;
    TextWidget* notes_ = nullptr;
    bool notes_show_ = false;
    std::map<int, QLabel*> headings_; // by the index of the box
};

} // namespace tarvik

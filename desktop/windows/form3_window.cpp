#include "desktop/windows/form3_window.h"

#include "desktop/windows/window_places.h"

#include <QApplication>
#include <QLabel>

namespace tarvik {

namespace {

// The boxes and labels keep their places, and the buttons go with the height: below this they would meet.
constexpr double smallest_width = 9800, smallest_height = 7100;

} // namespace

Form3Window::Form3Window(Front& front, FocusTracker& focus, Backdrop& backdrop, QWidget& main_window)
    : FormWindow(front, front.program.form3.window, backdrop), main_window_(main_window)
{
    setAttribute(Qt::WA_ShowWithoutActivating);
    Form3& form3 = front.program.form3;
    ControlMaker maker(front, focus, layout_);
    for (auto& [index, box] : form3.Text1) maker.line_box(box, FontRole::Column, *this).setAlignment(Qt::AlignCenter);
    for (auto& [index, label] : form3.Label1) maker.label(label, FontRole::Help, *this);
    for (auto& [index, button] : form3.Command1) maker.button(button, FontRole::Button, *this);
    notes_ = &maker.text(std::make_unique<ViewedBox>(form3.Text2, true), FontRole::Notes, *this);
    front.mirror.on_moved(FormId::Form3, [this] { layout_.place(this->front().scale); });
}

void Form3Window::set_zoom()
{
    const Scale& scale = front().scale;
    layout_.set_fonts(front().theme, scale);
    layout_.place(scale);
    notes_->lay_anew();
    setMinimumSize(qRound(scale.pixels(smallest_width)), qRound(scale.pixels(smallest_height)));
}

// Some systems activate whatever appears. Directly behind a box no window is active yet.
void Form3Window::appear()
{
    QWidget* const active = QApplication::activeWindow();
    show();
    (active ? *active : main_window_).activateWindow();
}

void Form3Window::before_first_show()
{
    place_beside(*this, main_window_);
}

} // namespace tarvik

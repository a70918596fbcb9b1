#include "desktop/windows/form1_window.h"

#include "desktop/front/input.h"
#include "desktop/windows/form1_layout.h"
#include "desktop/windows/window_places.h"

#include <QCoreApplication>
#include <QLabel>
#include <QMouseEvent>

#include <algorithm>

namespace tarvik {

namespace {

constexpr double smallest_part = 0.5; // of the opening size, that the user can make the window

} // namespace

Form1Window::Form1Window(Front& front, FocusTracker& focus, Backdrop& backdrop, Scale& scale, PaneFonts& fonts)
    : FormWindow(front, front.program.form1.window, backdrop), form1_(front.program.form1), scale_(scale),
      fonts_(fonts), layout_([this](const Control& control) { return fitted_place(form1_, control); }),
      progress_(*this), opening_(*this, [this] { post_resize(size()); })
{
    ControlMaker maker(front, focus, layout_);
    make_boxes(maker);
    make_buttons(maker);
    make_frames(maker);
    set_tab_order();
    front.mirror.on_moved(FormId::Form1, [this] { layout_.place(scale_); });
}

void Form1Window::make_boxes(ControlMaker& maker)
{
    for (Pane* pane : form1_.panes()) {
        texts_.push_back(&maker.text(std::make_unique<ViewedPane>(*pane), FontRole::Pane, *this));
        texts_.back()->setAccessibleName("文本");
    }
    query_box_ = &maker.line_box(form1_.query_box(), FontRole::Query, *this, true);
    texts_.push_back(&maker.text(std::make_unique<ViewedBox>(form1_.number_box(), false), FontRole::Number, *this));
    for (const int index : {4, 5})
        maker.line_box(form1_.Text1[index], FontRole::Page, *this).setAlignment(Qt::AlignCenter);
}

// The keys work again as soon as a button has done its work.
std::function<void()> Form1Window::to_query_box()
{
    return [this] {
        if (isAncestorOf(focusWidget())) query_box_->setFocus(Qt::OtherFocusReason);
    };
}

void Form1Window::make_buttons(ControlMaker& maker)
{
    for (auto& [index, button] : form1_.Command1) maker.button(button, FontRole::Button, *this, to_query_box());
    for (auto& [index, button] : form1_.Command2) {
        ButtonWidget& widget = maker.button(button, FontRole::Sign, *this, to_query_box());
        const bool held_by_mouse = index >= 2 && index <= 5;
        if (held_by_mouse) widget.setFocusPolicy(Qt::ClickFocus);
    }
    for (Control* button : {&form1_.Command6, &form1_.Command3})
        maker.button(*button, FontRole::Button, *this, to_query_box());
    for (OptionButton* option : {&form1_.Option3, &form1_.Option1, &form1_.Option2})
        maker.option(*option, *this, to_query_box());
}

void Form1Window::make_frames(ControlMaker& maker)
{
    std::array<QWidget*, 5> frames{};
    int number = 0;
    for (Control* frame : {&form1_.Frame1, &form1_.Frame2, &form1_.Frame3, &form1_.Frame4})
        frames[static_cast<std::size_t>(++number)] = &maker.frame(*frame, *this);
    const auto in_frame = [&](const auto& frame_of, int index) -> QWidget& {
        return *frames[static_cast<std::size_t>(frame_of[static_cast<std::size_t>(index)])];
    };
    const auto make_keys = [&](ControlArray<Control>& keys, const auto& frame_of) {
        for (auto& [index, key] : keys) maker.button(key, FontRole::Key, in_frame(frame_of, index), to_query_box());
    };
    make_keys(form1_.Command7, esc_frames);
    make_keys(form1_.Command8, q_frames);
    make_keys(form1_.Command9, third_key_frames);
    for (auto* arrows : {&form1_.Label1, &form1_.Label2})
        for (auto& [index, arrow] : *arrows) maker.label(arrow, FontRole::Label, in_frame(arrow_frames, index));
}

void Form1Window::set_tab_order()
{
    std::vector<const Control*> order{&form1_.query_box(), &form1_.number_box()};
    for (const int index : {1, 2, 3, 0, 4}) order.push_back(&form1_.Command1[index]);
    for (const Control* control : std::initializer_list<const Control*>{
             &form1_.Option3, &form1_.Option1, &form1_.Option2, &form1_.Command6, &form1_.Command3, &form1_.page_box(),
             &form1_.Command2[8], &form1_.page_size_box(), &form1_.Command2[0], &form1_.Command2[1]})
        order.push_back(control);
    for (const int index : {0, 3, 2, 1, 4}) {
        order.push_back(&form1_.Command7[index]);
        order.push_back(&form1_.Command8[index]);
        constexpr std::array<int, 5> third_keys{0, 3, 1, 2, 5}; // by the index of their "Esc"
        order.push_back(&form1_.Command9[third_keys[static_cast<std::size_t>(index)]]);
    }
    for (const int index : {4, 6}) order.push_back(&form1_.Command9[index]);
    for (const Pane* pane : form1_.panes()) order.push_back(pane);
    for (std::size_t i = 1; i < order.size(); ++i)
        setTabOrder(findChild<QWidget*>(widget_name(*order[i - 1])), findChild<QWidget*>(widget_name(*order[i])));
}

void Form1Window::fit_to_screen(QSize available)
{
    scale_.zoom = 1;
    full_size_ = {scale_.pixels(form1_.window.width()), scale_.pixels(form1_.window.height())};
    largest_zoom_ = opening_zoom(full_size_, available);
    set_zoom(largest_zoom_);
    setMinimumSize((full_size_ * largest_zoom_ * smallest_part).toSize());
}

// Below its opening size the window shows everything smaller, since the model's places need that much room.
void Form1Window::take_size(QSize size)
{
    const double fits = std::min(size.width() / full_size_.width(), size.height() / full_size_.height());
    set_zoom(std::min(largest_zoom_, fits));
    FormWindow::take_size(size);
}

void Form1Window::set_zoom(double zoom)
{
    scale_.zoom = zoom;
    fonts_.scale_changed();
    layout_.set_fonts(front().theme, scale_);
    layout_.place(scale_);
    for (TextWidget* text : texts_) text->lay_anew();
}

void Form1Window::before_first_show()
{
    place_main_window(*this, scale_.size(front().program.form3.window));
    query_box_->setFocus(Qt::OtherFocusReason);
    query_box_->selectAll();
    opening_.begin(size());
}

void Form1Window::resizeEvent(QResizeEvent* event)
{
    if (!opening_.running()) FormWindow::resizeEvent(event);
}

void Form1Window::mousePressEvent(QMouseEvent* event)
{
    pressed_ = event->button() == Qt::LeftButton;
}

void Form1Window::mouseReleaseEvent(QMouseEvent* event)
{
    const bool clicked = pressed_ && event->button() == Qt::LeftButton && rect().contains(event->pos());
    pressed_ = false;
    if (!clicked) return;
    for (const EventKind kind : {EventKind::MouseDown, EventKind::MouseUp, EventKind::Click})
        front().queue.post({kind, form1_.window});
}

// A key that a button has no use for is meant for the query box.
void Form1Window::keyPressEvent(QKeyEvent* event)
{
    if (query_box_->hasFocus() || typed_characters(*event).empty()) return;
    query_box_->setFocus(Qt::OtherFocusReason);
    QCoreApplication::sendEvent(query_box_, event);
}

} // namespace tarvik

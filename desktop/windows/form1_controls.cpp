#include "desktop/controls/control_maker.h"
#include "desktop/look/qt_text.h"
#include "desktop/windows/form1_window.h"
#include "desktop/windows/status_text.h"

#include <QAbstractButton>

#include <algorithm>
#include <array>

/// The main window's controls: made, put in the order of the Tab key, and placed.
namespace tarvik {

namespace {

constexpr int text_margin = 5; // between the query and its border
constexpr double gap = 45;     // between neighbours, three dots of the design
constexpr double window_edge = 100;
constexpr double frame_contents = 1080; // the keys of the highest frame end here

// The frame that each of the buttons and arrows of the key sequences stands in, by index; 1 stands for Frame1.
constexpr std::array<std::size_t, 6> first_frames{1, 2, 3, 4, 2, 2}; // of "Esc", "q" and the arrows
constexpr std::array<std::size_t, 7> third_key_frames{1, 3, 4, 2, 2, 2, 2};

Place number_box_place(const Form1& form1)
{
    Place place = place_of(form1.number_box());
    const Place corner = place_of(form1.Command2[4]);
    const bool beside = corner.left >= place.left + place.width || corner.left + corner.width <= place.left;
    const double room = corner.top - gap - place.top;
    if (!beside && room > 0) place.height = std::min(place.height, room);
    return place;
}

Place frame_place(const Form1& form1, const Control& frame)
{
    double edge = form1.window.width() - window_edge;
    Place place{};
    for (const Control* each : {&form1.Frame2, &form1.Frame3, &form1.Frame4, &form1.Frame1}) {
        place = place_of(*each);
        place.left = std::min(place.left, edge - place.width);
        edge = place.left - gap;
        const double room = form1.window.height() - status_height - gap - place.top;
        const double least = std::min(frame_contents + gap, place.height);
        place.top -= std::clamp(least - room, 0.0, 2 * gap);
        place.height = std::clamp(room, least, place.height);
        if (each == &frame) break;
    }
    return place;
}

// Three full-width signs, as some fonts have them, take more than the model's width.
Place page_button_place(const Control& button)
{
    constexpr double wider = 200;
    Place place = place_of(button);
    if (place.left > 0) place.left -= wider / 4;
    place.width = std::max(place.width, 732 + wider);
    return place;
}

} // namespace

void Form1Window::make_boxes()
{
    for (Pane* pane : form1_.panes()) {
        panes_.push_back(&controls().text(*pane, fonts_, FontRole::Pane, *this));
        if (pane != &form1_.RichTextBox1)
            panes_.back()->add_ruler({[this](int column) { return column_heading(form1_, column); },
                                      [this, pane](int columns) {
                                          return pane == &form1_.RichTextBox2 ||
                                                 (columns >= heading_count(form1_) && !has_own_columns(*pane));
                                      },
                                      [this](int column) { column_picked(column); }});
    }
    query_box_ = &controls().line_box(form1_.query_box(), FontRole::Query, *this, true);
    query_box_->setTextMargins(text_margin, 0, text_margin, 0);
    number_box_ = &controls().text(form1_.number_box(), number_fonts_, FontRole::Number, *this);
    number_box_->show_line_ends();
    for (const int index : {4, 5})
        controls().line_box(form1_.Text1[index], FontRole::Page, *this).setAlignment(Qt::AlignCenter);
}

void Form1Window::make_buttons()
{
    for (auto& [index, button] : form1_.Command1) controls().button(button, FontRole::Button, *this, to_query_box());
    for (auto& [index, button] : form1_.Command2) {
        QAbstractButton& widget = controls().button(button, FontRole::Sign, *this, to_query_box());
        const bool held_by_mouse = index >= 2 && index <= 5;
        if (held_by_mouse) widget.setFocusPolicy(Qt::ClickFocus);
    }
    for (Control* button : {&form1_.Command6, &form1_.Command3})
        controls().button(*button, FontRole::Button, *this, to_query_box());
    for (OptionButton* option : {&form1_.Option3, &form1_.Option1, &form1_.Option2})
        controls().option(*option, *this, to_query_box());
}

void Form1Window::make_frames()
{
    std::array<QWidget*, 5> frames{};
    int number = 0;
    for (Control* frame : {&form1_.Frame1, &form1_.Frame2, &form1_.Frame3, &form1_.Frame4})
        frames[static_cast<std::size_t>(++number)] = &controls().frame(*frame, *this);
    const auto in_frame = [&](const auto& frame_of, int index) -> QWidget& {
        return *frames[frame_of[static_cast<std::size_t>(index)]];
    };
    const auto make_keys = [&](ControlArray<Control>& keys, const auto& frame_of) {
        for (auto& [index, key] : keys)
            controls().button(key, FontRole::Key, in_frame(frame_of, index), to_query_box());
    };
    make_keys(form1_.Command7, first_frames);
    make_keys(form1_.Command8, first_frames);
    make_keys(form1_.Command9, third_key_frames);
    for (auto* arrows : {&form1_.Label1, &form1_.Label2})
        for (auto& [index, arrow] : *arrows) controls().label(arrow, FontRole::Label, in_frame(first_frames, index));
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

Place Form1Window::fitted(const Control& control) const
{
    if (&control == &form1_.number_box()) return number_box_place(form1_);
    if (&control == &form1_.Command2[0] || &control == &form1_.Command2[1]) return page_button_place(control);
    for (const Control* frame : {&form1_.Frame1, &form1_.Frame2, &form1_.Frame3, &form1_.Frame4})
        if (&control == frame) return frame_place(form1_, *frame);
    return place_of(control);
}

} // namespace tarvik

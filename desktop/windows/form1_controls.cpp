#include "desktop/windows/column_headings.h"
#include "desktop/windows/form1_window.h"

#include <QAbstractButton>

#include <algorithm>
#include <array>

/// The main window's controls: made in the order of the Tab key, and placed.
namespace tarvik {

namespace {

constexpr int text_margin = 5; // between the query and its border
constexpr double gap = 45;     // between neighbours, three dots of the design
constexpr double window_edge = 100;
constexpr double frame_contents = 1080; // the keys of the highest frame end here

QRectF number_box_place(const Form1& form1)
{
    QRectF place = place_of(form1.number_box());
    const QRectF corner = place_of(form1.Command2[4]);
    const bool beside = corner.left() >= place.right() || corner.right() <= place.left();
    const double room = corner.top() - gap - place.top();
    if (!beside && room > 0) place.setHeight(std::min(place.height(), room));
    return place;
}

// Three full-width signs, as some fonts have them, take more than the model's width.
QRectF page_button_place(const Control& button)
{
    constexpr double wider = 200;
    QRectF place = place_of(button);
    if (place.left() > 0) place.translate(-wider / 4, 0);
    place.setWidth(std::max(place.width(), 732 + wider));
    return place;
}

} // namespace

void Form1Window::make_controls()
{
    const auto add = [this](Control& control, const FontRole& role) -> QAbstractButton& {
        return add_button(control, role, *this, [this] { to_query_box(); });
    };
    query_box_ = &add_line_box(form1_.query_box(), font_role::query, *this, true);
    query_box_->setTextMargins(text_margin, 0, text_margin, 0);
    add_text(form1_.number_box(), number_fonts_, font_role::number, *this).show_line_ends();
    for (const int index : {1, 2, 3, 0, 4}) add(form1_.Command1[index], font_role::button);
    for (OptionButton* option : {&form1_.Option3, &form1_.Option1, &form1_.Option2})
        add_option(*option, *this, [this] { to_query_box(); });
    for (Control* button : {&form1_.Command6, &form1_.Command3}) add(*button, font_role::button);
    add_line_box(form1_.page_box(), font_role::page, *this).setAlignment(Qt::AlignCenter);
    add(form1_.Command2[8], font_role::sign);
    add_line_box(form1_.page_size_box(), font_role::page, *this).setAlignment(Qt::AlignCenter);
    for (const int index : {0, 1}) add(form1_.Command2[index], font_role::sign);
    for (const int held : {2, 3, 4, 5}) add(form1_.Command2[held], font_role::sign).setFocusPolicy(Qt::ClickFocus);
    make_keys();
    make_panes();
}

void Form1Window::make_keys()
{
    std::vector<QWidget*> frames;
    for (Control* frame : {&form1_.Frame1, &form1_.Frame2, &form1_.Frame3, &form1_.Frame4})
        frames.push_back(&add_frame(*frame, *this));
    const auto add = [this](Control& key, QWidget& frame) {
        add_button(key, font_role::key, frame, [this] { to_query_box(); });
    };
    constexpr std::array<std::size_t, 6> frame_of{0, 1, 2, 3, 1, 1}; // "Esc", "q" and the arrows, by index
    for (const auto& [first, third] : {std::pair(0, 0), {3, 2}, {2, 1}, {1, 3}, {4, 5}}) {
        QWidget& frame = *frames[frame_of[static_cast<std::size_t>(first)]];
        add(form1_.Command7[first], frame);
        add(form1_.Command8[first], frame);
        add(form1_.Command9[third], frame);
    }
    for (const int index : {4, 6}) add(form1_.Command9[index], *frames[1]);
    for (auto* arrows : {&form1_.Label1, &form1_.Label2})
        for (auto& [index, arrow] : *arrows)
            add_label(arrow, Qt::AlignCenter, *frames[frame_of[static_cast<std::size_t>(index)]]);
}

void Form1Window::make_panes()
{
    for (Pane* pane : form1_.panes()) {
        panes_.push_back(&add_text(*pane, fonts_, font_role::pane, *this));
        if (pane == &form1_.RichTextBox1) continue;
        panes_.back()->add_ruler({[this](int column) { return column_heading(form1_, column); },
                                  [this, pane](int columns) {
                                      return pane == &form1_.RichTextBox2 ||
                                             (columns >= heading_count(form1_) && !has_own_columns(*pane));
                                  },
                                  [this](int column) { column_picked(column); }});
    }
}

QRectF Form1Window::fitted(const Control& control) const
{
    if (&control == &form1_.number_box()) return number_box_place(form1_);
    if (&control == &form1_.Command2[0] || &control == &form1_.Command2[1]) return page_button_place(control);
    double edge = form1_.window.width() - window_edge;
    for (const Control* frame : {&form1_.Frame2, &form1_.Frame3, &form1_.Frame4, &form1_.Frame1}) {
        QRectF place = place_of(*frame);
        place.moveLeft(std::min(place.left(), edge - place.width()));
        edge = place.left() - gap;
        if (&control != frame) continue;
        const double room = form1_.window.height() - status_height - gap - place.top();
        const double least = std::min(frame_contents + gap, place.height());
        place.translate(0, -std::clamp(least - room, 0.0, 2 * gap));
        place.setHeight(std::clamp(room, least, place.height()));
        return place;
    }
    return place_of(control);
}

} // namespace tarvik

#include "mainwindow/mainwindow.h"

#include <algorithm>
#include <cmath>

/// Where the controls stand. Everything is in twips and nothing is rounded.
namespace tarvik {

namespace {

constexpr double golden_section = 0.618;
constexpr double edge = 200; // between the right-hand column and the window's edge
constexpr double movement = 72;

// Which timer a held "◎" turns on.
struct Movement {
    int button, timer;
};
constexpr Movement movements[] = {{3, 0}, {2, 1}, {4, 2}, {5, 3}};

std::array<Control*, 5> right_column(Form1& form1)
{
    return {&form1.Command2[1], &form1.Command2[8], &form1.page_box(), &form1.Command2[2], &form1.page_size_box()};
}

void set_panes(Form1& form1, void (Control::*set_size)(double twips), double size)
{
    for (Pane* pane : form1.panes()) (pane->*set_size)(size);
}

// The right-hand column moves to the window's edge, and the panes reach up to it.
void fit_to_width(Form1& form1)
{
    for (Control* control : right_column(form1)) control->set_left(form1.window.width() - control->width() - edge);
    set_panes(form1, &Control::set_width, form1.page_box().left() - form1.RichTextBox1.left() - edge);
}

// Everything that stands below the panes and moves with their lower edge.
std::vector<Control*> lower_controls(Form1& form1)
{
    std::vector<Control*> controls;
    for (auto& [index, button] : form1.Command1) controls.push_back(&button);
    for (Control* control : std::initializer_list<Control*>{
             &form1.Frame1, &form1.Frame2, &form1.Frame3, &form1.Frame4, &form1.query_box(), &form1.number_box(),
             &form1.Option1, &form1.Option2, &form1.Option3, &form1.Command6, &form1.Command3, &form1.Command2[4]})
        controls.push_back(control);
    return controls;
}

// The growing window stops at half the screen's width or when the panes are wide enough, whichever comes first. Each of
// its steps follows from the last width alone, so only that one is set.
double opening_width(Form1& form1, double screen_width, double factor)
{
    const double last_step = std::floor(screen_width * 0.5);
    // Pane width at window width w: (w - Text1(4)'s width - edge) - RichTextBox1's left - edge.
    const double offset = form1.page_box().width() + form1.RichTextBox1.left() + 2 * edge;
    const double enough = std::floor(10000 * factor + offset) + 1;
    return std::max(0.0, std::min(last_step, enough));
}

void scale_lower_controls(Form1& form1, double k)
{
    std::vector<Control*> scaled = lower_controls(form1);
    scaled.insert(scaled.end(), {&form1.page_box(), &form1.page_size_box()});
    for (Control* control : scaled) control->set_left(control->left() * k);
    for (auto& [index, button] : form1.Command1) button.set_height(button.height() * k);
}

} // namespace

void opening_animation(Program& program, double screen_width)
{
    Form1& form1 = program.form1;
    const bool wide = screen_width > 17000;
    const double base_width = wide ? 12960 : 8848;
    const double factor = wide ? 1.1 : 0.82;
    form1.window.set_width(opening_width(form1, screen_width, factor));
    form1.window.set_height(0.8 * form1.window.width());
    fit_to_width(form1);
    scale_lower_controls(form1, factor * form1.window.width() / base_width);
    const double left = form1.number_box().left() + form1.number_box().width() - form1.Command2[4].width();
    form1.Command2[4].set_left(left);
    form1.Command2[5].set_left(left);
    form1.window.set_width(form1.Command6.left() + form1.Command6.width() + edge);
}

void Form_Resize(Program& program)
{
    Form1& form1 = program.form1;
    if (!form1.formready || form1.window.window_state() != 0) return;
    set_panes(form1, &Control::set_height, form1.window.height() * golden_section);
    const double bottom = form1.RichTextBox1.top() + form1.RichTextBox1.height();
    form1.Command1[0].set_top(bottom + 468);
    form1.Command1[1].set_top(bottom + 1188);
    for (int index : {2, 3, 4}) form1.Command1[index].set_top(bottom + 1308);
    for (int index : {1, 2}) form1.Text1[index].set_top(bottom + 348);
    form1.Command2[4].set_top(bottom + form1.number_box().height());
    form1.Option3.set_top(bottom + 228);
    form1.Option1.set_top(bottom + 828);
    form1.Option2.set_top(bottom + 1428);
    const double frames = form1.Command1[4].top() + form1.Command1[4].height() + 100;
    for (Control* frame : form1.frames()) frame->set_top(frames);
    form1.Command6.set_top(form1.Option3.top());
    form1.Command3.set_top(form1.Option1.top());
    fit_to_width(form1);
}

void Command2_MouseDown(Program& program, int index)
{
    for (const auto& [button, timer] : movements)
        if (button == index) program.form1.Timer1[timer].set_enabled(true);
}

void Command2_MouseUp(Program& program, int index)
{
    if (std::ranges::none_of(movements, [index](const Movement& of) { return of.button == index; })) return;
    for (auto& [number, timer] : program.form1.Timer1) timer.set_enabled(false);
}

void Timer1_Timer(Program& program, int index)
{
    Form1& form1 = program.form1;
    const bool sideways = index < 2;
    const double step = index == 0 || index == 3 ? -movement : movement;
    const double size = (sideways ? form1.RichTextBox1.width() : form1.RichTextBox1.height()) + step;
    const auto set_size = sideways ? &Control::set_width : &Control::set_height;
    set_panes(form1, set_size, size);
    if (sideways)
        for (Control* control : right_column(form1)) control->set_left(control->left() + step);
    else
        for (Control* control : lower_controls(form1)) control->set_top(control->top() + step);
    if (step > 0 || size >= 100) return;
    form1.Timer1[index].set_enabled(false);
    set_panes(form1, set_size, 150);
}

} // namespace tarvik

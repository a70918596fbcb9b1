#include "mainwindow/mainwindow.h"

namespace tarvik {

namespace {

constexpr int enlarged_points = 28;

// Losing and regaining the enabled state ends whatever the pressed button had begun in the control.
void open_menu_over(Program& program, Control& control)
{
    control.set_enabled(false);
    control.set_enabled(true);
    control.request_focus();
    program.platform.screen.popup_menu();
}

bool* menu_flag(Form1& form1, int index)
{
    if (index == 1) return &form1.menuonquery;
    return index == 2 ? &form1.menuonnumber : nullptr;
}

/// Selects all of the text and gives it one size, the marked matches too.
void enlarge(Pane& pane)
{
    pane.select({Position(), pane.content().size()});
    std::vector<Mark> marks = pane.marks();
    for (Mark& mark : marks) mark.size = enlarged_points;
    pane.set_marks(std::move(marks));
    pane.set_text_font_size(enlarged_points);
    pane.set_selection_font_size(enlarged_points);
}

void copy(Program& program, const TextControl& box)
{
    program.platform.clipboard.clear();
    if (box.selection().length > 0) program.platform.clipboard.set_source(box.selected_source());
}

} // namespace

void RichTextBox_MouseDown(Program& program, Pane& pane, MouseButton button, bool ctrl)
{
    if (button == MouseButton::Middle && ctrl) enlarge(pane);
    if (button == MouseButton::Right) open_menu_over(program, pane);
}

void RichTextBox_MouseUp(Program& program, Pane& pane)
{
    copy(program, pane);
}

void Text1_MouseDown(Program& program, int index, MouseButton button)
{
    bool* flag = menu_flag(program.form1, index);
    if (!flag || button != MouseButton::Right) return;
    open_menu_over(program, program.form1.Text1[index]);
    *flag = true;
}

void Text1_MouseUp(Program& program, int index)
{
    bool* flag = menu_flag(program.form1, index);
    if (!flag || !*flag) return;
    program.form1.Text1[index].replace_selection(program.platform.clipboard.text());
    *flag = false;
}

void menu_Click(Program& program, MenuEntry entry)
{
    for (const auto& [box, has_focus] : program.form1.focus_flags()) {
        if (!*has_focus) continue;
        if (entry == MenuEntry::copy1) copy(program, *box);
        if (entry != MenuEntry::paste1) continue;
        box->replace_selection(program.platform.clipboard.text());
        program.platform.clipboard.clear();
    }
}

} // namespace tarvik

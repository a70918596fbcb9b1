#include "mainwindow/mainwindow.h"

#include <utility>

namespace tarvik {

namespace {

// What shows in one mode only. Opening and saving stay in both.
void show_queries(Form1& form1, bool visible)
{
    for (int index : {1, 2, 3}) form1.Command1[index].set_visible(visible);
    for (OptionButton* option : {&form1.Option1, &form1.Option2, &form1.Option3}) option->set_visible(visible);
}

void show_frames(Form1& form1, bool visible)
{
    for (Control* frame : {&form1.Frame1, &form1.Frame2, &form1.Frame3, &form1.Frame4}) frame->set_visible(visible);
}

void enter_analysis(Form1& form1)
{
    form1.Command6.set_caption(U"还原默认");
    form1.Command3.set_visible(true);
    show_queries(form1, false);
    show_frames(form1, true);
}

void leave_analysis(Form1& form1)
{
    form1.Command3.set_visible(false);
    form1.Command6.set_caption(U"数据分析");
    show_frames(form1, false);
    show_queries(form1, true);
}

} // namespace

void Command6_Click(Program& program)
{
    bool& analysismode = program.module1.analysismode;
    analysismode = !analysismode;
    if (analysismode) {
        enter_analysis(program.form1);
        return;
    }
    leave_analysis(program.form1);
    reset_to_defaults(program);
}

void Command3_Click(Program& program)
{
    bool& designeropen = program.module1.designeropen;
    designeropen = !designeropen;
    program.form4.window.set_visible(designeropen);
}

void Text1_Change(Program& program, int index)
{
    if (index != 1) return;
    program.form1.cutopenfile = false;
    forget_results(program);
}

void Text1_DblClick(Program& program, int index)
{
    if (index == 1 || index == 2 || index == 4) program.form1.Text1[index].set_text({});
}

void Option1_Click(Program& program)
{
    select_option(program.form1, program.form1.Option1);
    program.form1.resultpos = 0;
}

void Option2_Click(Program& program)
{
    select_option(program.form1, program.form1.Option2);
    program.form1.resultpos = 0;
}

void Option3_Click(Program& program)
{
    select_option(program.form1, program.form1.Option3);
    program.form1.cutopenfile = false;
}

void focus_changed(Program& program, const Control& control, bool has_focus)
{
    Form1& form1 = program.form1;
    const std::pair<const Control*, bool*> flags[] = {
        {&form1.query_box(), &form1.focusquery},  {&form1.number_box(), &form1.focusnumber},
        {&form1.RichTextBox1, &form1.focuspane1}, {&form1.RichTextBox2, &form1.focuspane2},
        {&form1.RichTextBox3, &form1.focuspane3},
    };
    for (const auto& [owner, flag] : flags)
        if (owner == &control) *flag = has_focus;
}

} // namespace tarvik

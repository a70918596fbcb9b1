#include "mainwindow/mainwindow.h"

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

} // namespace tarvik

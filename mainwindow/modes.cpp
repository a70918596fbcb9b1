#include "mainwindow/mainwindow.h"

namespace tarvik {

namespace {

// What shows in one mode only. Opening and saving stay in both.
void show_reading_controls(Form1& form1, bool reading)
{
    form1.Command3.set_visible(!reading);
    for (int index : {1, 2, 3}) form1.Command1[index].set_visible(reading);
    for (OptionButton* option : {&form1.Option1, &form1.Option2, &form1.Option3}) option->set_visible(reading);
    for (Control* frame : {&form1.Frame1, &form1.Frame2, &form1.Frame3, &form1.Frame4}) frame->set_visible(!reading);
}

} // namespace

void Command6_Click(Program& program)
{
    bool& analysismode = program.module1.analysismode;
    analysismode = !analysismode;
    program.form1.Command6.set_caption(analysismode ? U"还原默认" : U"数据分析");
    show_reading_controls(program.form1, !analysismode);
    if (!analysismode) reset_to_defaults(program);
}

void Command3_Click(Program& program)
{
    bool& designeropen = program.module1.designeropen;
    designeropen = !designeropen;
    program.form4.window.set_visible(designeropen);
}

} // namespace tarvik

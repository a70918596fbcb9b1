#include "mainwindow/mainwindow.h"

#include <utility>

namespace tarvik {

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

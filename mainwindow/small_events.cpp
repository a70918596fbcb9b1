#include "mainwindow/mainwindow.h"

#include <algorithm>
#include <array>

namespace tarvik {

Answer tell(Program& program, TextView text, TextView title, Icon icon)
{
    return ask(program, text, title, Buttons::OK, icon);
}

Answer ask(Program& program, TextView text, TextView title, Buttons buttons, Icon icon)
{
    const Answer answer = program.platform.dialogs.message({text.str(), title.str(), buttons, icon});
    program.form1.answer = static_cast<int>(answer);
    return answer;
}

Text installed(const Program& program, TextView name)
{
    return path_in(program.platform.files.installation_folder(), name);
}

void Text1_Change(Program& program, int index)
{
    if (index != 1) return;
    Form1& form1 = program.form1;
    form1.resultpos = 0;
    form1.cutopenfile = false;
    const auto last = static_cast<std::size_t>(form1.resultcount);
    for (TextArray* results :
         {&program.module1.enhits, &program.module1.zhhits, &program.module1.cnhits, &program.module1.filehits})
        results->clear(0, last);
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

double min3to1(double a, double b, double c)
{
    std::array sorted{a, b, c};
    std::ranges::sort(sorted);
    const auto first = std::ranges::find_if(sorted, [](double value) { return value != 0; });
    return first == sorted.end() ? 0 : *first;
}

double min2to1(double a, double b)
{
    return std::min(a, b);
}

double ccnn(TextView text)
{
    if (text.empty()) return 0;
    const auto value = number(text);
    if (!value) throw Failure(U"不是数值：" + text);
    return *value;
}

} // namespace tarvik

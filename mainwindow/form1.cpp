#include "mainwindow/form1.h"

#include <span>

namespace tarvik {

namespace {

constexpr FormId form = FormId::Form1;

struct Design {
    int index;
    std::u32string_view caption;
    Place place;
};

constexpr Place pane_place{960, 600, 10812, 5484};

constexpr Design text1_design[] = {
    {0, U"", pane_place}, {1, U"查寻条件", {2040, 6240, 4932, 732}}, {2, U"数目", {7560, 6240, 2052, 1092}},
    {3, U"", pane_place}, {4, U"页数", {12960, 4440, 732, 492}},     {5, U"1000", {12960, 5040, 732, 492}},
};

constexpr Design command1_design[] = {
    {0, U"打开", {360, 6360, 1332, 492}}, {1, U"查寻", {360, 7080, 1332, 492}},  {2, U"→", {1920, 7080, 972, 492}},
    {3, U"←", {5880, 7080, 972, 492}},    {4, U"保存", {3600, 7080, 1332, 492}},
};

constexpr Design command2_design[] = {
    {0, U"◆◆●", {0, 2520, 852, 492}},   {1, U"●◆◆", {12960, 2520, 732, 492}}, {2, U"◎", {13080, 480, 372, 372}},
    {3, U"◎", {240, 480, 372, 372}},    {4, U"◎", {9120, 7320, 372, 372}},    {5, U"◎", {8640, 120, 372, 372}},
    {8, U"▼", {13080, 3840, 372, 372}},
};

// The keys stand inside their frames, and their places count from the frame's corner.
constexpr Place key(double left, double top)
{
    return {left, top, 495, 375};
}
constexpr Place arrow(double left, double top)
{
    return {left, top, 240, 255};
}

constexpr Design command7_design[] = {
    {0, U"Esc", key(120, 360)}, {1, U"Esc", key(120, 420)},  {2, U"Esc", key(120, 360)},
    {3, U"Esc", key(120, 360)}, {4, U"Esc", key(2520, 420)},
};
constexpr Design command8_design[] = {
    {0, U"q", key(960, 360)}, {1, U"q", key(920, 420)},  {2, U"q", key(960, 360)},
    {3, U"q", key(960, 360)}, {4, U"q", key(3320, 420)},
};
constexpr Design command9_design[] = {
    {0, U"p", key(1800, 360)}, {1, U"z", key(1800, 360)}, {2, U"/", key(1800, 360)}, {3, U"c", key(1720, 420)},
    {4, U";", key(4120, 720)}, {5, U"p", key(4120, 240)}, {6, U"p", key(4720, 720)},
};
constexpr Design label1_design[] = {
    {0, U"→", arrow(660, 420)}, {1, U"→", arrow(640, 480)},  {2, U"→", arrow(660, 420)},
    {3, U"→", arrow(660, 420)}, {4, U"→", arrow(3040, 480)}, {5, U"→", arrow(2240, 480)},
};
constexpr Design label2_design[] = {
    {0, U"→", arrow(1500, 420)}, {1, U"→", arrow(1440, 480)}, {2, U"→", arrow(1500, 420)},
    {3, U"→", arrow(1500, 420)}, {4, U"∩", arrow(3860, 300)}, {5, U"≠", arrow(3860, 780)},
};

template <typename Kind>
void lay(ControlArray<Kind>& controls, std::span<const Design> design)
{
    for (const Design& row : design) {
        Kind& control = controls[row.index];
        if constexpr (std::is_same_v<Kind, TextBox>) control.set_text(row.caption);
        else control.set_caption(Text(row.caption));
        control.set_place(row.place);
    }
}

} // namespace

Form1::Form1(ModelListeners& listeners)
    : window(listeners, form, "Form1"), Text1(listeners, form, "Text1", 0, 5),
      RichTextBox1(listeners, form, "RichTextBox1"), RichTextBox2(listeners, form, "RichTextBox2"),
      RichTextBox3(listeners, form, "RichTextBox3"), Command1(listeners, form, "Command1", 0, 4),
      Command2(listeners, form, "Command2", {0, 1, 2, 3, 4, 5, 8}), Command3(listeners, form, "Command3"),
      Command6(listeners, form, "Command6"), Command7(listeners, form, "Command7", 0, 4),
      Command8(listeners, form, "Command8", 0, 4), Command9(listeners, form, "Command9", 0, 6),
      Option1(listeners, form, "Option1"), Option2(listeners, form, "Option2"), Option3(listeners, form, "Option3"),
      Frame1(listeners, form, "Frame1"), Frame2(listeners, form, "Frame2"), Frame3(listeners, form, "Frame3"),
      Frame4(listeners, form, "Frame4"), Label1(listeners, form, "Label1", 0, 5),
      Label2(listeners, form, "Label2", 0, 5), Timer1(listeners, form, "Timer1", 0, 3),
      Timer3(listeners, form, "Timer3"), Timer4(listeners, form, "Timer4"), Timer5(listeners, form, "Timer5"),
      Timer6(listeners, form, "Timer6"), Timer7(listeners, form, "Timer7"), Timer8(listeners, form, "Timer8"),
      Timer9(listeners, form, "Timer9"), Timer10(listeners, form, "Timer10")
{
    window.lay(application_title, {0, 0, 14400, 11520});
    window.set_visible(false);
    lay(Text1, text1_design);
    Text1[0].set_visible(false);
    Text1[3].set_visible(false);
    Text1[2].set_multi_line(true);
    for (Pane* pane : panes()) pane->set_place(pane_place);
    lay(Command1, command1_design);
    lay(Command2, command2_design);
    Command3.lay(U"报表自动化", {11760, 6720, 1575, 495});
    Command6.lay(U"数据分析", {11760, 6120, 1575, 495});
    lay(Command7, command7_design);
    lay(Command8, command8_design);
    lay(Command9, command9_design);
    Option1.lay(U"现代汉语", {9840, 6720, 1572, 492});
    Option2.lay(U"牛津英语", {9840, 7320, 1572, 612});
    Option3.lay(U"查寻文件", {9840, 6120, 1572, 492});
    Frame1.lay(U"数据列查询", {360, 7800, 2535, 975});
    Frame2.lay(U"数据列比较", {8400, 7800, 5775, 1215});
    Frame3.lay(U"数据列排序", {5640, 7800, 2655, 855});
    Frame4.lay(U"数据列统计", {3000, 7800, 2535, 855});
    lay(Label1, label1_design);
    lay(Label2, label2_design);
    for (auto& [index, timer] : Timer1) {
        timer.set_interval(81);
        timer.set_enabled(false);
    }
    for (Timer* timer : batch_timers()) {
        timer->set_interval(1000);
        timer->set_enabled(false);
    }
}

bool no_option_selected(const Form1& form1)
{
    return !form1.Option1.value() && !form1.Option2.value() && !form1.Option3.value();
}

void clear_options(Form1& form1)
{
    for (OptionButton* option : form1.options()) option->set_value(false);
}

void select_option(Form1& form1, OptionButton& option)
{
    for (OptionButton* other : form1.options())
        if (other != &option) other->set_value(false);
    option.set_value(true);
}

void bring_up(Form1& form1, Pane& pane)
{
    for (Pane* each : form1.panes()) each->set_visible(each == &pane);
}

} // namespace tarvik

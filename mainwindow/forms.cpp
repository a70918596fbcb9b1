#include "mainwindow/forms.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr FormId Main = FormId::Form1, Columns = FormId::Form3, Designer = FormId::Form4;

constexpr Place pane_place{960, 600, 10812, 5484};

constexpr ControlDesign text1_design[] = {
    {0, U"", pane_place}, {1, U"查寻条件", {2040, 6240, 4932, 732}}, {2, U"数目", {7560, 6240, 2052, 1092}},
    {3, U"", pane_place}, {4, U"页数", {12960, 4440, 732, 492}},     {5, U"1000", {12960, 5040, 732, 492}},
};

constexpr ControlDesign command1_design[] = {
    {0, U"打开", {360, 6360, 1332, 492}}, {1, U"查寻", {360, 7080, 1332, 492}},  {2, U"→", {1920, 7080, 972, 492}},
    {3, U"←", {5880, 7080, 972, 492}},    {4, U"保存", {3600, 7080, 1332, 492}},
};

constexpr ControlDesign command2_design[] = {
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

constexpr ControlDesign command7_design[] = {
    {0, U"Esc", key(120, 360)}, {1, U"Esc", key(120, 420)},  {2, U"Esc", key(120, 360)},
    {3, U"Esc", key(120, 360)}, {4, U"Esc", key(2520, 420)},
};
constexpr ControlDesign command8_design[] = {
    {0, U"q", key(960, 360)}, {1, U"q", key(920, 420)},  {2, U"q", key(960, 360)},
    {3, U"q", key(960, 360)}, {4, U"q", key(3320, 420)},
};
constexpr ControlDesign command9_design[] = {
    {0, U"p", key(1800, 360)}, {1, U"z", key(1800, 360)}, {2, U"/", key(1800, 360)}, {3, U"c", key(1720, 420)},
    {4, U";", key(4120, 720)}, {5, U"p", key(4120, 240)}, {6, U"p", key(4720, 720)},
};
constexpr ControlDesign label1_design[] = {
    {0, U"→", arrow(660, 420)}, {1, U"→", arrow(640, 480)},  {2, U"→", arrow(660, 420)},
    {3, U"→", arrow(660, 420)}, {4, U"→", arrow(3040, 480)}, {5, U"→", arrow(2240, 480)},
};
constexpr ControlDesign label2_design[] = {
    {0, U"→", arrow(1500, 420)}, {1, U"→", arrow(1440, 480)}, {2, U"→", arrow(1500, 420)},
    {3, U"→", arrow(1500, 420)}, {4, U"∩", arrow(3860, 300)}, {5, U"≠", arrow(3860, 780)},
};

constexpr ControlDesign column_boxes[] = {
    {0, U"5", {2880, 1680, 900, 495}}, {1, U"11", {5040, 1680, 900, 495}}, {2, U"10", {6840, 1680, 900, 495}},
    {3, U"1", {3720, 3840, 900, 495}}, {4, U"1", {6000, 3840, 900, 495}},  {5, U"1", {4920, 5520, 900, 495}},
};

constexpr ControlDesign column_help[] = {
    {0,
     U"esc-q-p "
     U"\r\n此按键操作比较同一个表中的两列时间日期间隔或字段内的查寻。对于时间日期比较，系统默认为表第5列与表第11列的"
     U"日期比较，如果大于指定的时间间隔（系统默认为10 "
     U"天），则显示出来。。如果要修改比较的列值，只需要更改下面的数值即可，"
     U"第一个框表示表中的列值A，第二个框表示表中的列值B,"
     U"第三个框表示时间间隔C。对于字段内的查寻，系统默认为第5列所在的字段，"
     U"列值可以在第一个框中更改。",
     {600, 120, 9300, 1555}},
    {1,
     U"esc-q-c -esc-q-\r\n此按键操作可以{ 相互交叉 }比较或{ 平行对应 "
     U"}比较两个表中的各一列的字符串。系统默认为两个表中的各第一列"
     U"比较，则显示出来。如果要修改比较的列值，只需要更改下面的数值即可，第一个框表示第一个表中的列值，第二个框表示第二"
     U"个表中的"
     U"列值。具体操作请按下“说明“按钮。",
     {600, 2400, 9300, 1320}},
    {2,
     U"esc-q-/ 或者 esc-q-z "
     U"\r\n此按键操作统计或者排序，同一个表中的一列的字符串。系统默认为表中的第一列，则显示出来。如果要修改"
     U"统计或排序的列值，只需要更改下面的数值框即可。",
     {600, 4440, 9300, 900}},
};

constexpr ControlDesign column_buttons[] = {{0, U"确认", {3240, 6840, 1332, 492}},
                                            {1, U"说明", {6600, 6840, 1332, 492}}};

constexpr Colour designer_background = rgb(215, 198, 149);
constexpr Colour designer_foreground = rgb(232, 227, 174);

struct Help {
    std::u32string_view text;
    double height;
};
constexpr Help designer_help[] = {
    {U"动态转移是先以模板EXCEL表中连续的表格(A行,B列)中列数B与SUF（I,J）数组元素J对应，然后以A行为起点依次将SUF(-1,J)"
     U"数组元素填入，"
     U"其中I应以-1代表从0到∞。是多行对多组的函数关系。动态转移是针对连续的表格而作出的动态分配数组元素的。",
     1400},
    {U"静态转移是将模板EXCEL表中分散的表格（A行,"
     U"B列）与SUF数组（0，J）一一对应，是单行对单组的函数关系。静态转移是针对分散的表格而"
     U"静态分配数组元素的。静态转移理论上可以代替动态转移，但需要填写很多对应的文本框。",
     1400},
    {U"  "
     U"query文本框主要用于筛选数据表时需要输入的查询条件，例如一班老师需要将一班所有同学的考试成绩筛选出来，这时，query"
     U"就可以设置为"
     U"‘一班’。然后，报表设计器就可以按照设计参数从数据库中筛选出的一班的考试成绩表，按照学号，自动提取考试成绩到每个学"
     U"生的EXCEL文件"
     U"中，自动保存，从而达到自动化报表的目的。",
     1900},
    {U"  "
     U"“1”框代表此数据表中的“关键字段”所在的列数，例如学校管理系统中的学号，然后依据学号来自动提取每个学生的考试成绩到E"
     U"XCEL报表。",
     900},
    {U"  An testsesame A "
     U"命令的设计参数保存为：automation.bin，能依据‘1’框中所示数据列进行报表自动化，例如学号列，自动按照学号，"
     U"提取每个学号的各科考试成绩到Excel报表模版-"
     U"designerA中（例如：成绩单），从而实现自动生成，保存名称为：“1”框筛选的数据｛例如："
     U"学号.xlsx｝.  An testsesame B 命令的EXCEL报表模版为：designerB，设计参数保存为：automation2.bin,设计规则与An "
     U"testsesame A "
     U"相同，可以分别实现一种报表的自动化。    An tomation "
     U"设计参数保存为：automation3.bin，当静态与动态转移的子框设计数量不够时，"
     U"可以通过此命令继续添加，它是前两者结果的完善。",
     2900},
};

// A row of the window shows two boxes of Text1 and two of Text2 with an even and the next odd index.
void lay_boxes(ControlArray<TextBox>& boxes, double left)
{
    for (auto& [index, box] : boxes) {
        const int row = (index < Form4::first_dynamic ? index : index - Form4::first_dynamic) / 2;
        box.set_place({left + (index % 2) * 1060, 420.0 + row * 540, 1000, 460});
        box.set_back_color(designer_foreground);
    }
}

} // namespace

Form1::Form1(ModelListeners& listeners)
    : window(listeners, Main, "Form1"), Text1(listeners, Main, "Text1", text1_design),
      RichTextBox1(listeners, Main, "RichTextBox1"), RichTextBox2(listeners, Main, "RichTextBox2"),
      RichTextBox3(listeners, Main, "RichTextBox3"), Command1(listeners, Main, "Command1", command1_design),
      Command2(listeners, Main, "Command2", command2_design), Command3(listeners, Main, "Command3"),
      Command6(listeners, Main, "Command6"), Command7(listeners, Main, "Command7", command7_design),
      Command8(listeners, Main, "Command8", command8_design), Command9(listeners, Main, "Command9", command9_design),
      Option1(listeners, Main, "Option1"), Option2(listeners, Main, "Option2"), Option3(listeners, Main, "Option3"),
      Frame1(listeners, Main, "Frame1"), Frame2(listeners, Main, "Frame2"), Frame3(listeners, Main, "Frame3"),
      Frame4(listeners, Main, "Frame4"), Label1(listeners, Main, "Label1", label1_design),
      Label2(listeners, Main, "Label2", label2_design), Timer1(listeners, Main, "Timer1", 4),
      Timer3(listeners, Main, "Timer3"), Timer4(listeners, Main, "Timer4"), Timer5(listeners, Main, "Timer5"),
      Timer6(listeners, Main, "Timer6"), Timer7(listeners, Main, "Timer7"), Timer8(listeners, Main, "Timer8"),
      Timer9(listeners, Main, "Timer9"), Timer10(listeners, Main, "Timer10")
{
    window.lay(application_title, {0, 0, 14400, 11520});
    window.set_visible(false);
    Text1[0].set_visible(false);
    Text1[3].set_visible(false);
    Text1[2].set_multi_line(true);
    for (Pane* pane : panes()) pane->set_place(pane_place);
    Command3.lay(U"报表自动化", {11760, 6720, 1575, 495});
    Command6.lay(U"数据分析", {11760, 6120, 1575, 495});
    Option1.lay(U"现代汉语", {9840, 6720, 1572, 492});
    Option2.lay(U"牛津英语", {9840, 7320, 1572, 612});
    Option3.lay(U"查寻文件", {9840, 6120, 1572, 492});
    Frame1.lay(U"数据列查询", {360, 7800, 2535, 975});
    Frame2.lay(U"数据列比较", {8400, 7800, 5775, 1215});
    Frame3.lay(U"数据列排序", {5640, 7800, 2655, 855});
    Frame4.lay(U"数据列统计", {3000, 7800, 2535, 855});
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

Form3::Form3(ModelListeners& listeners)
    : window(listeners, Columns, "Form3"), Text1(listeners, Columns, "Text1", column_boxes),
      Text2(listeners, Columns, "Text2"), Command1(listeners, Columns, "Command1", column_buttons),
      Label1(listeners, Columns, "Label1", column_help)
{
    window.lay(application_title, {0, 0, 10200, 8400});
    window.set_visible(false);
    window.set_back_color(rgb(232, 227, 174));
    for (auto& [index, box] : Text1) box.set_back_color(rgb(208, 208, 182));
    for (auto& [index, label] : Label1) label.set_back_color(rgb(192, 208, 192));
    Text2.set_place({480, 120, 8160, 6480});
    Text2.set_multi_line(true);
    Text2.set_visible(false);
    Text2.set_back_color(rgb(232, 227, 180));
    for (auto& [index, button] : Command1) button.set_back_color(rgb(192, 208, 182));
}

Form4::Form4(ModelListeners& listeners)
    : window(listeners, Designer, "Form4"), Text1(listeners, Designer, "Text1", last_box + 1),
      Text2(listeners, Designer, "Text2", last_box + 1), Text3(listeners, Designer, "Text3"),
      Text4(listeners, Designer, "Text4"), Command1(listeners, Designer, "Command1"),
      Command2(listeners, Designer, "Command2"), Command3(listeners, Designer, "Command3"),
      Preview(listeners, Designer, "Preview"), Frame1(listeners, Designer, "Frame1"),
      Frame2(listeners, Designer, "Frame2"), Frame3(listeners, Designer, "Frame3"),
      Label1(listeners, Designer, "Label1"), Label2(listeners, Designer, "Label2"),
      Label3(listeners, Designer, "Label3"), Label4(listeners, Designer, "Label4"),
      Label5(listeners, Designer, "Label5")
{
    window.lay(U"Tarvik计算报表自动化设计器", {0, 0, 16800, 9480});
    window.set_visible(false);
    load_design_texts(*this);
    lay_boxes(Text1, 170);
    lay_boxes(Text2, 2410);
    Text3.set_place({4920, 7020, 3000, 560});
    Text4.set_place({8060, 7020, 1540, 560});
    Text3.set_back_color(designer_foreground);
    Text4.set_back_color(designer_foreground);
    Command1.lay(U"保存参数", {4920, 7780, 1480, 560});
    Command2.lay(U"参数校验", {6520, 7780, 1480, 560});
    Command3.lay(U"预览", {8120, 7780, 1480, 560});
    Preview.set_visible(false);
    for (Control* button : {&Command1, &Command2, &Command3}) button->set_back_color(designer_foreground);
    Frame1.lay(U"数据报表分析", {120, 120, 16560, 9240});
    Frame2.lay(U"静态：EXCELB表（行，列）= SUF（I,J）", {120, 360, 4680, 8100});
    Frame3.lay(U"动态：EXCELB表（行，列）= SUF数组元素（I,J）", {4920, 360, 4680, 6480});
    for (Control* area : {static_cast<Control*>(&window), &Frame1, &Frame2, &Frame3})
        area->set_back_color(designer_background);
    const std::array labels{&Label1, &Label2, &Label3, &Label4, &Label5};
    double top = 360;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        labels[i]->lay(designer_help[i].text, {9780, top, 6660, designer_help[i].height});
        labels[i]->set_back_color(designer_background);
        top += designer_help[i].height + 60;
    }
}

std::vector<TextBox*> Form4::design_boxes()
{
    std::vector<TextBox*> boxes{&Text3};
    for (ControlArray<TextBox>* array : {&Text1, &Text2})
        for (auto& [index, box] : *array) boxes.push_back(&box);
    boxes.push_back(&Text4);
    return boxes;
}

void Form4::load(TextBox& box, const Text& text)
{
    kept_[&box] = text;
    box.set_text(text);
}

void Form4::boxes_are_kept()
{
    for (TextBox* box : design_boxes()) kept_[box] = box->text();
}

bool Form4::holds_typed_text() const
{
    return std::ranges::any_of(kept_, [](const auto& kept) {
        const Text& text = kept.first->text();
        return !text.empty() && text != kept.second;
    });
}

void load_design_texts(Form4& form4)
{
    for (auto& [index, box] : form4.Text1) form4.load(box, U"0");
    for (auto& [index, box] : form4.Text2)
        form4.load(box, index >= Form4::first_dynamic && index % 2 == 0 ? U"-1" : U"0");
    form4.load(form4.Text3, U"query");
    form4.load(form4.Text4, U"1");
}

} // namespace tarvik

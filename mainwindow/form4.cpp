#include "mainwindow/form4.h"

#include <algorithm>
#include <array>

namespace tarvik {

namespace {

constexpr FormId form = FormId::Form4;
constexpr Colour background = rgb(215, 198, 149);
constexpr Colour foreground = rgb(232, 227, 174);

struct Help {
    std::u32string_view text;
    double height;
};
constexpr Help help[] = {
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
        box.set_back_color(foreground);
    }
}

} // namespace

Form4::Form4(ModelListeners& listeners)
    : window(listeners, form, "Form4"), Text1(listeners, form, "Text1", 0, last_box),
      Text2(listeners, form, "Text2", 0, last_box), Text3(listeners, form, "Text3"), Text4(listeners, form, "Text4"),
      Command1(listeners, form, "Command1"), Command2(listeners, form, "Command2"),
      Command3(listeners, form, "Command3"), Preview(listeners, form, "Preview"), Frame1(listeners, form, "Frame1"),
      Frame2(listeners, form, "Frame2"), Frame3(listeners, form, "Frame3"), Label1(listeners, form, "Label1"),
      Label2(listeners, form, "Label2"), Label3(listeners, form, "Label3"), Label4(listeners, form, "Label4"),
      Label5(listeners, form, "Label5")
{
    window.lay(U"Tarvik计算报表自动化设计器", {0, 0, 16800, 9480});
    window.set_visible(false);
    load_design_texts(*this);
    lay_boxes(Text1, 170);
    lay_boxes(Text2, 2410);
    Text3.set_place({4920, 7020, 3000, 560});
    Text4.set_place({8060, 7020, 1540, 560});
    Text3.set_back_color(foreground);
    Text4.set_back_color(foreground);
    Command1.lay(U"保存参数", {4920, 7780, 1480, 560});
    Command2.lay(U"参数校验", {6520, 7780, 1480, 560});
    Command3.lay(U"预览", {8120, 7780, 1480, 560});
    Preview.set_visible(false);
    for (Control* button : {&Command1, &Command2, &Command3}) button->set_back_color(foreground);
    Frame1.lay(U"数据报表分析", {120, 120, 16560, 9240});
    Frame2.lay(U"静态：EXCELB表（行，列）= SUF（I,J）", {120, 360, 4680, 8100});
    Frame3.lay(U"动态：EXCELB表（行，列）= SUF数组元素（I,J）", {4920, 360, 4680, 6480});
    for (Control* area : {static_cast<Control*>(&window), &Frame1, &Frame2, &Frame3}) area->set_back_color(background);
    const std::array labels{&Label1, &Label2, &Label3, &Label4, &Label5};
    double top = 360;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        labels[i]->lay(help[i].text, {9780, top, 6660, help[i].height});
        labels[i]->set_back_color(background);
        top += help[i].height + 60;
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

#include "mainwindow/mainwindow.h"

namespace tarvik {

namespace {

constexpr FormId form = FormId::Form3;

struct Box {
    std::u32string_view text;
    double left, top;
};
constexpr Box boxes[] = {{U"5", 2880, 1680}, {U"11", 5040, 1680}, {U"10", 6840, 1680},
                         {U"1", 3720, 3840}, {U"1", 6000, 3840},  {U"1", 4920, 5520}};

struct Help {
    std::u32string_view text;
    double top, height;
};
constexpr Help help[] = {
    {U"esc-q-p "
     U"\r\n此按键操作比较同一个表中的两列时间日期间隔或字段内的查寻。对于时间日期比较，系统默认为表第5列与表第11列的"
     U"日期比较，如果大于指定的时间间隔（系统默认为10 "
     U"天），则显示出来。。如果要修改比较的列值，只需要更改下面的数值即可，"
     U"第一个框表示表中的列值A，第二个框表示表中的列值B,"
     U"第三个框表示时间间隔C。对于字段内的查寻，系统默认为第5列所在的字段，"
     U"列值可以在第一个框中更改。",
     120, 1555},
    {U"esc-q-c -esc-q-\r\n此按键操作可以{ 相互交叉 }比较或{ 平行对应 "
     U"}比较两个表中的各一列的字符串。系统默认为两个表中的各第一列"
     U"比较，则显示出来。如果要修改比较的列值，只需要更改下面的数值即可，第一个框表示第一个表中的列值，第二个框表示第二"
     U"个表中的"
     U"列值。具体操作请按下“说明“按钮。",
     2400, 1320},
    {U"esc-q-/ 或者 esc-q-z "
     U"\r\n此按键操作统计或者排序，同一个表中的一列的字符串。系统默认为表中的第一列，则显示出来。如果要修改"
     U"统计或排序的列值，只需要更改下面的数值框即可。",
     4440, 900},
};

} // namespace

Form3::Form3(ModelListeners& listeners)
    : window(listeners, form, "Form3"), Text1(listeners, form, "Text1", 0, 5), Text2(listeners, form, "Text2"),
      Command1(listeners, form, "Command1", 0, 1), Label1(listeners, form, "Label1", 0, 2)
{
    window.lay(U"Tarvik 计算", {0, 0, 10200, 8400});
    window.set_visible(false);
    window.set_back_color(rgb(232, 227, 174));
    for (auto& [index, box] : Text1) {
        const Box& design = boxes[index];
        box.set_text(Text(design.text));
        box.set_place({design.left, design.top, 900, 495});
        box.set_back_color(rgb(208, 208, 182));
    }
    for (auto& [index, label] : Label1) {
        label.lay(help[index].text, {600, help[index].top, 9300, help[index].height});
        label.set_back_color(rgb(192, 208, 192));
    }
    Text2.set_place({480, 120, 8160, 6480});
    Text2.set_multi_line(true);
    Text2.set_visible(false);
    Text2.set_back_color(rgb(232, 227, 180));
    Command1[0].lay(U"确认", {3240, 6840, 1332, 492});
    Command1[1].lay(U"说明", {6600, 6840, 1332, 492});
    for (auto& [index, button] : Command1) button.set_back_color(rgb(192, 208, 182));
}

} // namespace tarvik

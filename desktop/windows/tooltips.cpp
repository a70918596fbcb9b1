#include "desktop/windows/form_window.h"

namespace tarvik {

namespace {

struct Tip {
    const char* widgets; // how their names begin
    const char* name;    // what a screen reader says
    const char* tip;
};

constexpr Tip tips[] = {
    {"Form1.RichTextBox1", "结果窗格", nullptr},
    {"Form1.RichTextBox2", "文档窗格", nullptr},
    {"Form1.RichTextBox3", "数据表窗格", nullptr},
    {"Form1.Text1(1)", "查寻条件",
     "查寻的字符串、An 命令、按键序列\nEsc 查寻数据列，Enter 查寻或执行命令；↑ ↓ PgUp PgDn 滚动窗格，F6 到窗格，F1 "
     "手册"},
    {"Form1.Text1(2)", "数目", "隔离符（例如“。”加回车，Ctrl+Enter 输入换行），或查寻的结果数；双击清空"},
    {"Form1.Text1(4)", "页数", "页号；填好后按 ▼。填文件名的一部分后回车，扫描并打印"},
    {"Form1.Text1(5)", "每页字数", "每页的字符数，打开文档之前填写"},
    {"Form1.Command1(0)", "打开", "打开一个文本文件（Ctrl+O），也可以把文件拖到窗口上"},
    {"Form1.Command1(1)", "查寻", "按所选的方式查寻（在查寻条件框中按 Enter）"},
    {"Form1.Command1(2)", "下一条结果", "下一条结果（Alt+→）"},
    {"Form1.Command1(3)", "上一条结果", "上一条结果（Alt+←）"},
    {"Form1.Command1(4)", "保存", "把结果或数据表存为文本文件（Ctrl+S）"},
    {"Form1.Command2(0)", "上一页", "上一页（Ctrl+PgUp）"},
    {"Form1.Command2(1)", "下一页", "下一页（Ctrl+PgDn）；选了“查寻文件”时按页查找"},
    {"Form1.Command2(2)", "窗格加宽", "按住：窗格加宽"},
    {"Form1.Command2(3)", "窗格变窄", "按住：窗格变窄"},
    {"Form1.Command2(4)", "窗格加高", "按住：窗格加高"},
    {"Form1.Command2(5)", "窗格变矮", "按住：窗格变矮"},
    {"Form1.Command2(8)", "跳页", "跳到“页数”框中的页"},
    {"Form1.Command3", "报表自动化", "显示或隐藏报表设计器"},
    {"Form1.Command6", "切换方式", "在阅读方式与数据分析方式之间切换"},
    {"Form1.Option1", "现代汉语", "查现代汉语词典"},
    {"Form1.Option2", "牛津英语", "查英语词典"},
    {"Form1.Option3", "查寻文件", "截取所在的句子；●◆◆ 变为按页查找"},
    {"Form1.Command7(", "查寻数据列", "Esc：把含有查寻条件的行做成表"},
    {"Form1.Command8(", "拆列", "q：把记录拆成列"},
    {"Form1.Command9(0)", "比较", "p：日期间隔比较，或字段内查寻"},
    {"Form1.Command9(1)", "排序", "z：按一列排序"},
    {"Form1.Command9(2)", "统计", "/：统计一列中各个值的次数"},
    {"Form1.Command9(3)", "双表", "c：下一次查寻进入第二个表 suG"},
    {"Form1.Command9(4)", "不∩", ";：比较时显示“不∩”的记录"},
    {"Form1.Command9(5)", "比较", "p：两个表交叉或平行比较"},
    {"Form1.Command9(6)", "比较", "p：两个表交叉或平行比较"},
    {"Form3.Text1(0)", "列次 A", "日期列 A，或字段内查寻的列"},
    {"Form3.Text1(1)", "列次 B", "日期列 B；字段内查寻的起点"},
    {"Form3.Text1(2)", "间隔 C", "间隔天数 C；字段内查寻的终点"},
    {"Form3.Text1(3)", "suF 的列次", "比较时第一个表 suF 的列（按 c 时读取）"},
    {"Form3.Text1(4)", "suG 的列次", "比较时第二个表 suG 的列"},
    {"Form3.Text1(5)", "统计、排序的列次", "统计或排序的列"},
    {"Form3.Text2", "说明", nullptr},
    {"Form3.Command1(0)", "确认", "收起本窗口（下次查寻时再现，F8 随时回来）；在说明中：保存说明"},
    {"Form3.Command1(1)", "说明", "阅读和修改说明"},
};

} // namespace

void set_tooltips(QWidget& window)
{
    for (QWidget* widget : window.findChildren<QWidget*>())
        for (const Tip& tip : tips) {
            if (!widget->objectName().startsWith(tip.widgets)) continue;
            widget->setAccessibleName(tip.name);
            if (tip.tip) widget->setToolTip(tip.tip);
        }
}

} // namespace tarvik

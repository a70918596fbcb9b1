#include "desktop/windows/command_list.h"

#include "desktop/look/qt_text.h"

#include <QApplication>
#include <QScrollBar>

#include <algorithm>

namespace tarvik {

namespace {

constexpr CommandHelp commands[] = {
    {U"An docket", U"每张收货凭证一张维修单：3139、3138、3137"},
    {U"An testdocket", U"按设计的列位出测试单：automation.bin"},
    {U"An label", U"标签清单：z1 与 z6 两段"},
    {U"An order", U"按打开的报表填写一个文件夹中各表的故障、维修、料号与费用"},
    {U"An prices", U"把打开的报表中的八列抄入一个文件夹中的各表"},
    {U"An bendocket", U"每台设备一张服务账单：3138、3137"},
    {U"An dandocket", U"每个送修批号一张清单：3160"},
    {U"An wodben", U"自制品汇总一张表：打开的报表"},
    {U"An dockword", U"不可修复设备的 Word 报告：3158"},
    {U"An dockwordp", U"同上，并且打印每份报告"},
    {U"An testsesame A", U"按模板 designerA.xlsx 出单：3159、automation.bin"},
    {U"An testsesame B", U"按模板 designerB.xlsx 出单：3159、automation2.bin"},
    {U"An tomation", U"逐个对照、更新 Excel 文件：3160、automation3.bin"},
    {U"An Sesame Open", U"按打开的报表批量更新 Excel 文件：automation2.bin"},
    {U"An Excelfile", U"从每个 Excel 文件取学号之类的键，把表中各列填回去"},
    {U"An keptfile", U"把文件名含有表中某列之值的文件移出一个文件夹"},
    {U"An kqtest", U"考勤：由打卡记录得逐日考勤表"},
    {U"An statistic", U"字符清单：3150.txt"},
    {U"An appear", U"显示报表设计器"},
    {U"An disappear", U"隐藏报表设计器"},
};

constexpr int most_shown = 9;
constexpr int edge = 4; // around the lines

QString line_of(const CommandHelp& row)
{
    return to_qt(TextView(row.command)).leftJustified(18) + to_qt(TextView(row.does));
}

} // namespace

std::span<const CommandHelp> command_help()
{
    return commands;
}

CommandList::CommandList(QWidget& window) : QListWidget(&window)
{
    setObjectName("commands");
    setAccessibleName("命令");
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setViewportMargins(edge, edge, edge, edge);
    setAutoFillBackground(true);
    hide();
}

void CommandList::offer(const QString& typed, const QRect& box)
{
    clear();
    if (typed.startsWith("An"))
        for (const CommandHelp& row : commands) {
            const QString command = to_qt(TextView(row.command));
            if (!command.startsWith(typed) || command == typed) continue;
            auto* item = new QListWidgetItem(line_of(row), this);
            item->setData(Qt::UserRole, command);
        }
    setVisible(count() > 0);
    if (count() == 0) return;
    show_lighter();
    const int rows = std::min(count(), most_shown);
    const int height = rows * sizeHintForRow(0) + 2 * (frameWidth() + edge);
    const int bar = count() > rows ? verticalScrollBar()->sizeHint().width() : 0;
    const int width =
        std::min(sizeHintForColumn(0) + bar + 4 * frameWidth() + 2 * edge + 8, parentWidget()->width() - box.left());
    setGeometry(box.left(), std::max(0, box.top() - height - 2), width, height);
    raise();
}

// Than the pane that it covers, whose colour it would take over.
void CommandList::show_lighter()
{
    QPalette lighter = QApplication::palette();
    for (const auto role : {QPalette::Base, QPalette::Window}) lighter.setColor(role, lighter.color(QPalette::Base));
    setPalette(lighter);
}

QString CommandList::step(int entries)
{
    const int next = currentRow() < 0 ? (entries > 0 ? 0 : count() - 1) : currentRow() + entries;
    setCurrentRow(std::clamp(next, 0, count() - 1));
    return current();
}

QString CommandList::current() const
{
    const QListWidgetItem* item = currentRow() < 0 ? this->item(0) : currentItem();
    return item ? item->data(Qt::UserRole).toString() : QString();
}

} // namespace tarvik

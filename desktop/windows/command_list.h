#pragma once

#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_widget.h"
#include "desktop/windows/line_box.h"
#include "runs/batch_runner.h"

#include <QApplication>
#include <QKeyEvent>
#include <QListWidget>
#include <QScrollBar>

#include <algorithm>
#include <string_view>

namespace tarvik {

/// A command of the query box, what it does, in one line, and what the heading of the manual holds that says more.
struct CommandHelp {
    std::u32string_view command, does;
    const char* heading;
};
inline constexpr CommandHelp command_help[] = {
    {U"An docket", U"每张收货凭证一张维修单：3139、3138、3137", "批量出单"},
    {U"An testdocket", U"按设计的列位出测试单：automation.bin", "其他维修单据"},
    {U"An label", U"标签清单：z1 与 z6 两段", "标签清单"},
    {U"An order", U"按打开的报表填写一个文件夹中各表的故障、维修、料号与费用", "送修单"},
    {U"An prices", U"把打开的报表中的八列抄入一个文件夹中的各表", "送修单"},
    {U"An bendocket", U"每台设备一张服务账单：3138、3137", "其他维修单据"},
    {U"An dandocket", U"每个送修批号一张清单：3160", "其他维修单据"},
    {U"An wodben", U"自制品汇总一张表：打开的报表", "其他维修单据"},
    {U"An dockword", U"不可修复设备的 Word 报告：3158", "其他维修单据"},
    {U"An dockwordp", U"同上，并且打印每份报告", "其他维修单据"},
    {U"An testsesame A", U"按模板 designerA.xlsx 出单：3159、automation.bin", "设计器"},
    {U"An testsesame B", U"按模板 designerB.xlsx 出单：3159、automation2.bin", "设计器"},
    {U"An tomation", U"逐个对照、更新 Excel 文件：3160、automation3.bin", "设计器"},
    {U"An Sesame Open", U"按打开的报表批量更新 Excel 文件：automation2.bin", "设计器"},
    {U"An Excelfile", U"从每个 Excel 文件取学号之类的键，把表中各列填回去", "设计器"},
    {U"An keptfile", U"把文件名含有表中某列之值的文件移出一个文件夹", "设计器"},
    {U"An kqtest", U"考勤：由打卡记录得逐日考勤表", "考勤"},
    {U"An statistic", U"字符清单：3150.txt", "标签清单"},
    {U"An appear", U"显示报表设计器", "设计器"},
    {U"An disappear", U"隐藏报表设计器", "设计器"},
};

/// The commands that begin as the user has begun to type, over the query box; none where that is a command already. It
/// never takes the focus: the keys of the box choose from it, and scroll the pane while it does not show.
class CommandList final : public QListWidget {
public:
    /// `shown_pane` gives the pane that the user looks at, if there is one.
    CommandList(Front& front, LineBox& box, QWidget& window, std::function<TextWidget*()> shown_pane)
        : QListWidget(&window), front_(front), box_(box), shown_pane_(std::move(shown_pane))
    {
        setObjectName("commands");
        setAccessibleName("命令");
        setFocusPolicy(Qt::NoFocus);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setViewportMargins(edge, edge, edge, edge);
        setAutoFillBackground(true);
        hide();
        box_.installEventFilter(this);
        box_.takes_as_text = [this](char32_t key) { return is_text(key); };
        connect(this, &QListWidget::itemClicked, this, [this] { put(true); });
    }

    /// The text of the box may have changed, by the user or not.
    void follow_box()
    {
        const bool runs = run_in_progress(front_.program.form1);
        types_text &= front_.program.form1.dbresult;
        const QString text = box_.text();
        if (text == put_ && !runs) return;
        put_.clear();
        if (box_.hasFocus() && !runs) offer(text);
        else hide();
    }
    /// Whether typed letters are text while they would be keys otherwise; ends with Enter and Esc.
    bool types_text = false;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (watched == &box_ && event->type() == QEvent::FocusOut) hide();
        if (watched != &box_ || event->type() != QEvent::KeyPress) return QListWidget::eventFilter(watched, event);
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_Escape) {
            hide();
            types_text = false;
        }
        if (key.modifiers() != Qt::NoModifier && key.modifiers() != Qt::KeypadModifier) return false;
        TextWidget* const pane = shown_pane_();
        return (isVisible() && pick(key.key())) || (pane && pane->scroll_by_key(key.key()));
    }

private:
    static constexpr int most_shown = 9;
    static constexpr int edge = 4; // around the lines

    void offer(const QString& typed)
    {
        clear();
        const Text text = from_qt(typed);
        const bool is_command = std::ranges::count(command_help, text, &CommandHelp::command) > 0;
        for (const CommandHelp& row : command_help) {
            if (is_command || !text.starts_with(U"An") || !row.command.starts_with(text)) continue;
            const QString command = to_qt(row.command);
            auto* item = new QListWidgetItem(command.leftJustified(18) + to_qt(row.does), this);
            item->setData(Qt::UserRole, command);
        }
        setVisible(count() > 0);
        if (count() == 0) return;
        QPalette lighter = QApplication::palette(); // than the pane that it covers, whose colour it would take over
        lighter.setColor(QPalette::Window, lighter.color(QPalette::Base));
        setPalette(lighter);
        const QRect box = box_.geometry();
        const int rows = std::min(count(), most_shown);
        const int height = rows * sizeHintForRow(0) + 2 * (frameWidth() + edge);
        const int bar = count() > rows ? verticalScrollBar()->sizeHint().width() : 0;
        const int width = std::min(sizeHintForColumn(0) + bar + 4 * frameWidth() + 2 * edge + 8,
                                   parentWidget()->width() - box.left());
        setGeometry(box.left(), std::max(0, box.top() - height - 2), width, height);
        raise();
    }
    // The letters of a command are no keys, whatever they do elsewhere.
    bool is_text(char32_t key) const
    {
        const Text text = front_.program.form1.query_box().text() + key;
        const auto begins = [&text](const CommandHelp& row) { return row.command.starts_with(text); };
        return types_text || (text.starts_with(U"An") && std::ranges::any_of(command_help, begins));
    }
    bool pick(int key)
    {
        if (key == Qt::Key_Tab && currentRow() >= 0) {
            put(true);
            return true;
        }
        if (key != Qt::Key_Down && key != Qt::Key_Up) return false;
        const int next = key == Qt::Key_Down ? currentRow() + 1 : currentRow() < 0 ? count() - 1 : currentRow() - 1;
        setCurrentRow(std::clamp(next, 0, count() - 1));
        put(false);
        return true;
    }
    // Puts the chosen command into the box.
    void put(bool closes)
    {
        const QString command = currentItem()->data(Qt::UserRole).toString();
        put_ = closes ? QString() : command;
        if (closes) hide();
        front_.queue.submit([this, command] {
            TextBox& box = front_.program.form1.query_box();
            box.set_text(from_qt(command));
            box.select({Position::at_offset(box.text().size()), 0});
        });
    }
    Front& front_;
    LineBox& box_;
    std::function<TextWidget*()> shown_pane_;
    QString put_; // what the list has put into the box, and the user has not changed since
};

} // namespace tarvik

#pragma once

#include "desktop/services/system.h"
#include "desktop/windows/form1_window.h"
#include "desktop/windows/form3_window.h"
#include "desktop/windows/task_window.h"

#include <QActionGroup>
#include <QFile>
#include <QMenu>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStyle>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextTable>

#include <optional>

namespace tarvik {

/// The manual, which is part of the program.
class ManualWindow final : public QTextBrowser {
public:
    ManualWindow()
    {
        setObjectName("manual");
        setWindowTitle("Tarvik 计算 使用手册");
        setOpenExternalLinks(true);
        setSearchPaths({":/manual"});
        new QShortcut(Qt::Key_Escape, this, this, &QWidget::close);
    }

    /// Shows the manual at the first heading that holds this, or where it was.
    void open_at(const QString& heading)
    {
        if (document()->isEmpty()) {
            QFile file(":/manual/manual.md");
            constexpr int title_bar = 36, border = 8;
            const QRect free = screen()->availableGeometry();
            resize(QSize(fontMetrics().averageCharWidth() * 100, fontMetrics().height() * 36)
                       .boundedTo(free.size() - QSize(2 * border, title_bar + border)));
            move(free.right() - border - width(), free.top() + (free.height() - title_bar - height()) / 2);
            if (file.open(QIODevice::ReadOnly)) document()->setMarkdown(QString::fromUtf8(file.readAll()));
            document()->setDocumentMargin(fontMetrics().height());
            for (QTextFrame* frame : document()->rootFrame()->childFrames())
                if (auto* table = dynamic_cast<QTextTable*>(frame)) table->setFormat(table_look(*table));
        }
        show();
        raise();
        activateWindow();
        for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
            if (block.blockFormat().headingLevel() == 0 || !block.text().contains(heading)) continue;
            moveCursor(QTextCursor::End); // so that the heading comes to the top and not to the bottom
            setTextCursor(QTextCursor(block));
            break;
        }
    }

protected:
    // A picture is no wider than the window.
    QVariant loadResource(int type, const QUrl& name) override
    {
        // Both margins, and the scroll bar.
        const int edge =
            2 * fontMetrics().height() + style()->pixelMetric(QStyle::PM_ScrollBarExtent) + 2 * frameWidth();
        QVariant resource = QTextBrowser::loadResource(type, name);
        if (type != QTextDocument::ImageResource) return resource;
        const QImage picture = QImage::fromData(resource.toByteArray());
        const int room = width() - edge;
        return picture.width() > room ? picture.scaledToWidth(room, Qt::SmoothTransformation) : picture;
    }

private:
    // One line between the cells, and room around their texts.
    static QTextTableFormat table_look(const QTextTable& table)
    {
        QTextTableFormat look = table.format();
        look.setBorderCollapse(true);
        look.setBorder(1);
        look.setBorderBrush(QColor(186, 168, 112));
        look.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        look.setCellPadding(4);
        look.setTopMargin(6);
        look.setBottomMargin(10);
        return look;
    }
};

/// The menu of the main window, with the keys that work wherever the focus is: what boxes and buttons lack, and what
/// the user can choose of the view, which is kept over the program's end.
class MainMenu {
public:
    /// `set_look` gets none where the look follows the system.
    MainMenu(Program& program, Form1Window& form1, Form3Window& form3, QWidget& form4, TaskWindow& tasks,
             std::function<void(std::optional<Look>)> set_look, const std::function<void(bool)>& follow_file)
        : program_(program), form1_(form1), form3_(form3), form4_(form4), tasks_(tasks), set_look_(std::move(set_look))
    {
        QPushButton& button = form1.status().menu_button();
        const auto open = [this, &button] {
            menu_.popup(button.mapToGlobal(QPoint(0, -menu_.sizeHint().height())));
            menu_.setActiveAction(menu_.actions().front());
        };
        QObject::connect(&button, &QPushButton::clicked, &menu_, open);
        QObject::connect(new QShortcut(Qt::Key_F10, &form1), &QShortcut::activated, &menu_, open);
        const auto press = [this](const Control& control) { return [this, &control] { form1_.press(control); }; };
        const Form1& model = program.form1;
        add(menu_, {{"打开……", {"Ctrl+O"}, press(model.Command1[0])},
                    {"保存……", {"Ctrl+S"}, press(model.Command1[4])},
                    {"打开安装目录", {}, [this] { show(to_qt(program_.platform.files.installation_folder())); }}});
        add(*menu_.addMenu("阅读与查寻"),
            {{"上一页", {"Ctrl+PgUp"}, press(model.Command2[0])},
             {"下一页", {"Ctrl+PgDown"}, press(model.Command2[1])},
             {"上一条结果", {"Alt+Left"}, press(model.Command1[3])},
             {"下一条结果", {"Alt+Right"}, press(model.Command1[2])},
             {"到结果所在的页", {"F5"}, [this] { form1_.go_to_result(); }},
             {"放回隔离符", {"F7"}, [this] { form1_.put_separator(); }},
             {},
             {"在窗格中查找", {"Ctrl+F"}, [this] { form1_.find_bar().open(); }},
             {"查找下一处", {"F3"}, [this] { form1_.find_bar().find(true); }},
             {"查找上一处", {"Shift+F3"}, [this] { form1_.find_bar().find(false); }},
             {},
             {"查所选的词", {"F2"}, [this] { form1_.look_up(); }},
             {"前一个查过的词", {"Alt+Up"}, [this] { form1_.walk_words(-1); }},
             {"后一个查过的词", {"Alt+Down"}, [this] { form1_.walk_words(1); }},
             {},
             {"按键与键入之间切换", {"F4"}, [this] { form1_.switch_typing(); }},
             {"查寻条件框与窗格", {"F6"}, [this] { form1_.isActiveWindow() ? form1_.switch_focus() : back(); }, true},
             {"列次小窗口", {"F8"}, [this] { form3_.isActiveWindow() ? back() : form3_.take_focus(); }, true}});
        add(*menu_.addMenu("运行"), {{"任务……", {"F9"}, [this] { tasks_.open_list(); }, true},
                                     {"录制任务，结束录制", {"Shift+F9"}, [this] { tasks_.record_or_stop(); }, true},
                                     {},
                                     {"做完手上这张就停", {"Ctrl+."}, [this] { form1_.status().stop(); }},
                                     {"出了和没有出的单", {"Ctrl+L"}, [this] { form1_.status().list_end(); }},
                                     {"打开所存的文件夹", {"Ctrl+E"}, [this] { form1_.status().open_end(); }},
                                     {"打开存储路径", {}, [this] { show(output_folder(program_)); }}});
        add_view(follow_file);
        add(menu_, {{"使用手册", {"F1"}, [this] { switch_manual(); }, true}});
    }

private:
    static constexpr const char* designer_heading = "设计器";

    // What the heading of the manual that helps with what is in work holds.
    QString manual_heading() const
    {
        if (form4_.isActiveWindow()) return designer_heading;
        const Form1& form1 = program_.form1;
        const Text& query = form1.query_box().text();
        for (const CommandHelp& row : command_help)
            if (query.starts_with(row.command)) return row.heading;
        if (query.starts_with(U"An")) return "批量出单";
        if (program_.module1.designeropen) return designer_heading;
        if (form1.dbresult || program_.module1.analysismode) return "数据列";
        return "阅读与查寻";
    }
    void switch_manual()
    {
        if (manual_.isActiveWindow()) manual_.close();
        else manual_.open_at(manual_heading());
    }
    void back()
    {
        form1_.activateWindow();
        form1_.query_box().setFocus(Qt::ShortcutFocusReason);
    }
    void show(const QString& folder) { form1_.status().show_by_system(folder); }
    /// An entry, or a separator where it has no text. The keys work while the menu is closed, and some in every window.
    struct Entry {
        QString text{};
        QStringList keys{};
        std::function<void()> act{};
        bool everywhere = false;
    };
    void add(QMenu& menu, std::initializer_list<Entry> entries)
    {
        for (const Entry& entry : entries) {
            QAction* const action = entry.text.isEmpty() ? menu.addSeparator() : menu.addAction(entry.text);
            if (!entry.act) continue;
            QList<QKeySequence> sequences;
            for (const QString& key : entry.keys) sequences += QKeySequence(key);
            action->setShortcuts(sequences);
            if (entry.everywhere) action->setShortcutContext(Qt::ApplicationShortcut);
            form1_.addAction(action);
            QObject::connect(action, &QAction::triggered, &menu_, entry.act);
        }
    }
    void add_switch(QMenu& menu, const char* text, const QString& setting, bool preset, std::function<void(bool)> act)
    {
        QAction* const action = menu.addAction(text);
        action->setCheckable(true);
        action->setChecked(user_settings().value(setting, preset).toBool());
        act(action->isChecked());
        QObject::connect(action, &QAction::toggled, &menu_, [setting, act = std::move(act)](bool on) {
            user_settings().setValue(setting, on);
            act(on);
        });
    }
    void add_view(const std::function<void(bool)>& follow_file)
    {
        QMenu& menu = *menu_.addMenu("显示");
        add_switch(menu, "自动换行（表格除外）", "view/wraps", true, [this](bool on) {
            for (TextWidget* pane : form1_.panes()) pane->set_wraps_prose(on);
        });
        add_switch(menu, "行号", "view/numbers", false, [this](bool on) {
            for (TextWidget* pane : form1_.panes()) pane->show_line_numbers(on);
        });
        add_switch(menu, "跟随增长的文件", "view/follows", false, follow_file);
        menu.addSeparator();
        add(menu, {{"文字放大", {"Ctrl++", "Ctrl+="}, [this] { form1_.zoom_panes(1); }},
                   {"文字缩小", {"Ctrl+-"}, [this] { form1_.zoom_panes(-1); }},
                   {"文字复原", {"Ctrl+0"}, [this] { form1_.zoom_panes(0); }}});
        add_looks(*menu.addMenu("外观"));
    }
    void add_looks(QMenu& menu)
    {
        const QString setting = "view/look";
        const struct {
            const char *text, *name;
            std::optional<Look> look;
        } looks[] = {{"跟随系统", "", std::nullopt},
                     {"浅色", "light", Look::Light},
                     {"深色", "dark", Look::Dark},
                     {"高对比度", "contrast", Look::HighContrast}};
        auto* const group = new QActionGroup(&menu);
        const QString chosen = user_settings().value(setting).toString();
        for (const auto& row : looks) {
            QAction* const action = group->addAction(menu.addAction(row.text));
            action->setCheckable(true);
            action->setChecked(chosen == row.name);
            if (action->isChecked()) set_look_(row.look);
            QObject::connect(action, &QAction::triggered, &menu_, [this, setting, row] {
                user_settings().setValue(setting, row.name);
                set_look_(row.look);
            });
        }
    }
    Program& program_;
    Form1Window& form1_;
    Form3Window& form3_;
    QWidget& form4_;
    TaskWindow& tasks_;
    std::function<void(std::optional<Look>)> set_look_;
    ManualWindow manual_;
    QMenu menu_;
};

} // namespace tarvik

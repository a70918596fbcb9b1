#pragma once

#include "desktop/look/theme.h"
#include "desktop/windows/form1_window.h"
#include "desktop/windows/form3_window.h"
#include "desktop/windows/manual_window.h"
#include "desktop/windows/task_window.h"

#include <QMenu>

#include <optional>

namespace tarvik {

/// What the user can choose of the view, done by the owner of the menu.
struct MenuHost {
    std::function<void(std::optional<Look>)> set_look; ///< none follows the system
    std::function<void(bool)> follow_file;
};

/// The menu of the main window, with the keys that work wherever the focus is: what boxes and buttons lack, and what
/// the user can choose of the view, which is kept over the program's end.
class MainMenu {
public:
    MainMenu(Program& program, Form1Window& form1, Form3Window& form3, QWidget& form4, TaskWindow& tasks,
             MenuHost host);

private:
    void add(QMenu& menu, const char* text, const QStringList& keys, std::function<void()> act);
    void add_switch(QMenu& menu, const char* text, const QString& setting, bool preset, std::function<void(bool)> act);
    void add_reading();
    void add_run();
    void add_view();
    void add_looks(QMenu& menu);
    Program& program_;
    Form1Window& form1_;
    Form3Window& form3_;
    TaskWindow& tasks_;
    MenuHost host_;
    ManualWindow manual_;
    QMenu menu_;
};

} // namespace tarvik

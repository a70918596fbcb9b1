#pragma once

#include "desktop/look/theme.h"
#include "desktop/windows/form1_window.h"
#include "desktop/windows/form3_window.h"
#include "desktop/windows/task_window.h"

#include <memory>
#include <optional>

namespace tarvik {

/// What the user can choose of the view, done by the owner of the menu.
struct MenuHost {
    std::function<void(std::optional<Look>)> set_look; ///< none follows the system
    std::function<void(bool)> follow_file;
};

/// The menu of the main window, with the keys that work wherever the focus is: what boxes and buttons lack, and what
/// the user can choose of the view, which is kept over the program's end. It
/// lasts as long as what is given.
std::shared_ptr<void> make_main_menu(Program& program, Form1Window& form1, Form3Window& form3, QWidget& form4,
                                     TaskWindow& tasks, MenuHost host);

} // namespace tarvik

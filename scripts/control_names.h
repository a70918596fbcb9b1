#pragma once

#include "mainwindow/mainwindow.h"
#include "scripts/script.h"

#include <string>
#include <string_view>

/// What scripts call the controls of the three windows: `Text1(1)`, `RichTextBox3`, `Form3.Text1(5)`.
namespace tarvik {

std::string script_name(const Control& control);
/// The control of that name, which the main window's may have with their window, too; nothing when there is none.
Control* find_control(const Program& program, std::string_view name);
/// Throws ScriptFailure for a name that no control has.
Control& control_named(const Program& program, std::string_view name);

/// A property of the controls of some kinds. They are read of no others.
struct ControlProperty {
    std::string_view name;
    bool (*has)(const Control& control);
    ScriptValue (*read)(const Control& control);
};
/// Each control has those that it has in this order.
std::span<const ControlProperty> control_properties();

} // namespace tarvik

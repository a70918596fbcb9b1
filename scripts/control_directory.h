#pragma once

#include "mainwindow/mainwindow.h"
#include "scripts/script.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tarvik {

/// A control as what it is. The plain ones are buttons, frames and labels.
using AnyControl = std::variant<Control*, Window*, OptionButton*, Timer*, TextBox*, Pane*>;

/// The name that scripts have for it.
std::string script_name(const Control& control);

Control& as_control(const AnyControl& control);

/// Reads one property of a control; nothing when controls of its kind have no property of that name.
std::function<ScriptValue()> property_reader(const AnyControl& control, std::string_view property);
/// The names of the properties that a control of this kind has.
std::vector<std::string_view> property_names(const AnyControl& control);

/// All controls of the three windows by the names that a script uses: `Text1(1)`, `RichTextBox3`, `Form3.Text1(5)`. The
/// main window's controls may be named with their window, too.
class ControlDirectory {
public:
    explicit ControlDirectory(Program& program);

    const AnyControl* find(std::string_view name) const;
    /// Throws ScriptFailure for a name that no control has.
    const AnyControl& at(std::string_view name) const;

    /// The same control, to work on: the model's listeners are only shown theirs.
    Control& control(const Control& shown) const;

    /// The names in the order of the windows' lists.
    const std::vector<std::string>& names() const { return names_; }

private:
    template <typename Kind>
    void add_one(Kind& control);
    template <typename Kind>
    void add_one(ControlArray<Kind>& array);

    std::map<std::string, AnyControl, std::less<>> controls_;
    std::vector<std::string> names_;
};

} // namespace tarvik

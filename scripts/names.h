#pragma once

#include "scripts/control_directory.h"
#include "scripts/script.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// An expression of a script, ready to be read again and again.
struct Expression {
    std::string written;               ///< as the script wrote it
    std::function<ScriptValue()> read; ///< its value at this moment
    const Control* control = nullptr;  ///< whose property it is; nothing for any other name
};

/// Every name that a script can ask for: the properties of the controls, the shared arrays and members, the clipboard.
class Names {
public:
    Names(const Program& program, const ControlDirectory& controls) : program_(program), controls_(controls) {}

    /// Throws ScriptFailure for an unknown name and for an index outside of its array.
    Expression resolve(std::string_view written) const;
    /// All of them; an array stands once, with i (and j) for its indices.
    std::vector<std::string> all() const;

private:
    const Program& program_;
    const ControlDirectory& controls_;
};

/// Names that are followed: each time that the value of one has changed is a line of the transcript.
class Watches {
public:
    explicit Watches(Transcript& transcript) : transcript_(transcript) {}

    /// The value that stands now prints nothing. A name that is followed already stays followed once.
    void add(Expression expression);
    /// To be called when a control has changed.
    void look_at(const Control& control);
    /// To be called when a handler ends and before a dialog: everything that is no property of a control.
    void look_at_members();

private:
    struct Watch {
        Expression expression;
        ScriptValue last;
    };
    void look(Watch& watch);

    Transcript& transcript_;
    std::vector<Watch> watches_;
};

} // namespace tarvik

#pragma once

#include "scripts/control_names.h"

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

/// What a name means to this program: a property of a control, an element of a shared array, a shared member or the
/// clipboard. Throws ScriptFailure for an unknown name and for an index outside of its array.
Expression resolve(const Program& program, std::string_view written);
/// All names that a script can ask for; an array stands once, with i (and j) for its indices.
std::vector<std::string> all_names(const Program& program);

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

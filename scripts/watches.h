#pragma once

#include "scripts/names.h"
#include "scripts/transcript.h"

#include <vector>

namespace tarvik {

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
        Value last;
    };
    void look(Watch& watch);

    Transcript& transcript_;
    std::vector<Watch> watches_;
};

} // namespace tarvik

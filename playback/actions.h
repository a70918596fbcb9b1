#pragma once

#include "playback/script.h"
#include "playback/session.h"

#include <span>
#include <stdexcept>

namespace tarvik {

/// An expectation that did not hold. The script goes on.
class MissedExpectation : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Does what one line of a script says. Throws ScriptFailure when it says nothing that can be done, and
/// MissedExpectation.
void perform(Session& session, std::span<const Word> line);

} // namespace tarvik

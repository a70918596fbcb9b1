#pragma once

#include "scripts/script.h"
#include "scripts/stage.h"

#include <span>
#include <stdexcept>

namespace tarvik {

/// An expectation that did not hold. The script goes on.
class MissedExpectation : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The hole of every task that holds the installation folder.
inline constexpr std::u32string_view installation_hole = U"安装目录";

/// Does what one line of a script says. Throws ScriptFailure when it says nothing that can be done, and
/// MissedExpectation.
void perform(Stage& stage, std::span<const Word> line);
/// A task that has asked less than it did once takes another course, too: a ScriptFailure.
void check_left_over(const Stage& stage);

} // namespace tarvik

#pragma once

#include "scripts/script.h"

#include <optional>
#include <string>
#include <vector>

namespace tarvik {

/// A line of a script as it is written down: the action, its control, further words as they stand, and a text.
struct Step {
    std::string action, control, words;
    std::optional<Text> text;
    std::optional<Text> before; ///< what a box held that is set

    bool is(std::string_view of_action, std::string_view of_control) const
    {
        return action == of_action && control == of_control;
    }
    std::string line() const;
};

/// The lines of a recording, the shortest that do the same.
class RecordedScript {
public:
    /// What was asked meanwhile stands ahead of the line.
    void add(Step step);
    /// An answer or announcement that belongs to the line that follows.
    void add_answer(Step step) { answers_.push_back(std::move(step)); }
    /// What happened leaves no line, nor do the answers to it.
    void drop_answers() { answers_.clear(); }
    std::vector<std::string> lines() const;

private:
    bool joined_to_last(Step& step);

    std::vector<Step> steps_, answers_;
};

} // namespace tarvik

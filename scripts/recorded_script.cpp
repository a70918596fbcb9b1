#include "scripts/recorded_script.h"

#include <utility>

namespace tarvik {

std::string Step::line() const
{
    std::string line = action;
    for (const std::string& word : {control, words, text ? quoted_word(*text) : std::string()})
        if (!word.empty()) line += " " + word;
    return line;
}

void RecordedScript::add(Step step)
{
    if (answers_.empty() && joined_to_last(step)) return;
    for (Step& answer : std::exchange(answers_, {})) steps_.push_back(std::move(answer));
    steps_.push_back(std::move(step));
}

bool RecordedScript::joined_to_last(Step& step)
{
    if (steps_.empty()) return false;
    Step& last = steps_.back();
    if (step.is("dblclick", step.control) && last.is("click", step.control)) {
        last.action = step.action;
        return true;
    }
    if (!last.is(step.action, step.control)) return false;
    if (step.action == "type") {
        *last.text += *step.text;
        return true;
    }
    // A box that was changed and changed back has been changed.
    if (step.action == "set" && step.text != last.before) {
        last.text = std::move(step.text);
        return true;
    }
    return false;
}

std::vector<std::string> RecordedScript::lines() const
{
    std::vector<std::string> lines{"task"};
    for (const Step& step : steps_) lines.push_back(step.line());
    return lines;
}

} // namespace tarvik

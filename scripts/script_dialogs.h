#pragma once

#include "platform/platform.h"
#include "scripts/script.h"

#include <deque>
#include <functional>
#include <optional>

namespace tarvik {

/// What the user is going to answer, one queue for each kind of box. A text of nothing is a box cancelled.
struct Answers {
    std::deque<Answer> replies;
    std::deque<std::optional<Text>> inputs;
    std::deque<std::optional<Text>> files;
    std::deque<Text> messages; ///< what the boxes of a task say
    /// Of a task. Each of its boxes must say what was announced, a file that it opens must be there, and a relative
    /// path lies in the installation folder.
    const Files* task_files = nullptr;

    /// Nothing of what was laid ready is left.
    bool empty() const { return replies.empty() && inputs.empty() && files.empty() && messages.empty(); }
};

/// Boxes that the script answers: each is a line of the transcript. A box with a choice that has no answer, or one that
/// it does not offer, ends the script by ScriptFailure.
class ScriptDialogs final : public Dialogs {
public:
    /// `before_dialog` is called ahead of each box.
    ScriptDialogs(Transcript& transcript, Answers& answers, std::function<void()> before_dialog)
        : transcript_(transcript), answers_(answers), before_dialog_(std::move(before_dialog))
    {
    }

    Answer message(const Message& message) override;
    Text input(TextView title, TextView prompt, TextView preset) override;
    std::optional<Text> open_file(TextView filter) override;
    std::optional<Text> save_file(TextView filter) override { return choose_file("save", filter); }

private:
    void compare(const Message& message);
    std::optional<Text> choose_file(std::string_view kind, TextView filter);
    std::optional<Text> answer_box(std::deque<std::optional<Text>>& queue, std::string_view box, std::string_view line);

    Transcript& transcript_;
    Answers& answers_;
    std::function<void()> before_dialog_;
};

} // namespace tarvik

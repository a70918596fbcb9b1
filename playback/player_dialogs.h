#pragma once

#include "playback/answers.h"
#include "playback/transcript.h"

#include <functional>

namespace tarvik {

/// Boxes that the script answers: each is a line of the transcript. A box with a choice that has no answer, or one that
/// it does not offer, ends the script by ScriptFailure.
class PlayerDialogs final : public Dialogs {
public:
    /// `before_dialog` is called ahead of each box.
    PlayerDialogs(Transcript& transcript, Answers& answers, std::function<void()> before_dialog)
        : transcript_(transcript), answers_(answers), before_dialog_(std::move(before_dialog))
    {
    }

    Answer message(const Message& message) override;
    Text input(TextView title, TextView prompt, TextView preset) override;
    std::optional<Text> open_file(TextView filter) override { return choose_file("open", filter); }
    std::optional<Text> save_file(TextView filter) override { return choose_file("save", filter); }

private:
    std::optional<Text> choose_file(std::string_view kind, TextView filter);
    std::optional<Text> answer_box(std::deque<std::optional<Text>>& queue, std::string_view box, std::string_view line);

    Transcript& transcript_;
    Answers& answers_;
    std::function<void()> before_dialog_;
};

} // namespace tarvik

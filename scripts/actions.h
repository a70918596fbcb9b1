#pragma once

#include "platform/platform.h"
#include "scripts/names.h"
#include "scripts/user.h"

#include <chrono>
#include <deque>
#include <functional>
#include <optional>
#include <span>
#include <stdexcept>

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

/// What the lines of a script work on: the program, the user that acts in it, and what is looked at. A front adds how
/// time passes and who is asked for what changes from one playing to the next.
class Stage {
public:
    Stage(Program& program_, Transcript& transcript_, Watches& watches_, Answers& answers_)
        : program(program_), transcript(transcript_), watches(watches_), answers(answers_),
          user(program, [this] { watches.look_at_members(); })
    {
    }
    virtual ~Stage() = default;
    Stage(const Stage&) = delete;
    Stage& operator=(const Stage&) = delete;

    virtual void pass_time(std::chrono::microseconds span) = 0;
    /// Lets time pass until no run is in progress; more than `limit` is a ScriptFailure.
    virtual void run_batches(std::chrono::microseconds limit) = 0;
    /// The time of the last line still passes; what it asks comes later.
    virtual bool waits() const { return false; }
    /// Gives whether the context menu was open, and closes it.
    virtual bool close_menu() = 0;
    /// The value of a hole; a ScriptFailure when there is none.
    virtual Text ask(const Text& name, const std::optional<Text>& preset, bool is_file) = 0;
    /// The first line that does something follows: what was asked for is known.
    virtual void begin() {}

    Program& program;
    Transcript& transcript;
    Watches& watches;
    Answers& answers;
    User user;
    Holes holes;        ///< what stands in curly brackets in quoted words, and what is put there
    bool begun = false; ///< a line has done something
};

/// An expectation that did not hold. The script goes on.
class MissedExpectation : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Does what one line of a script says. Throws ScriptFailure when it says nothing that can be done, and
/// MissedExpectation.
void perform(Stage& stage, std::span<const Word> line);
/// A task that has asked less than it did once takes another course, too: a ScriptFailure.
void check_left_over(const Stage& stage);

} // namespace tarvik

#pragma once

#include "scripts/user.h"

#include <chrono>
#include <deque>
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
    bool of_task = false;

    /// Nothing of what was laid ready is left.
    bool empty() const { return replies.empty() && inputs.empty() && files.empty() && messages.empty(); }
};

/// What the lines of a script work on: the program, the user that acts in it, and what is looked at. A front adds how
/// time passes and who is asked for what changes from one playing to the next. Where the program's boxes come here, the
/// script answers them, each a line of the transcript: one with a choice that has no answer, or one that it does not
/// offer, ends the script by ScriptFailure.
class Stage : public Dialogs {
public:
    /// The transcript goes to `out`, if there is one.
    explicit Stage(Program& program_, std::ostream* out = nullptr)
        : program(program_), transcript(out), watches(transcript), user(program, watches)
    {
    }
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

    Answer message(const Message& message) override;
    Text input(TextView title, TextView prompt, TextView preset) override;
    std::optional<Text> open_file(TextView filter) override;
    std::optional<Text> save_file(TextView filter) override { return choose_file("save", filter); }

    Program& program;
    Transcript transcript;
    Watches watches;
    User user;
    Answers answers;
    Holes holes;        ///< what stands in curly brackets in quoted words, and what is put there
    bool begun = false; ///< a line has done something

private:
    void compare(const Message& message);
    std::optional<Text> choose_file(std::string_view kind, TextView filter);
    std::optional<Text> answer_box(std::deque<std::optional<Text>>& queue, std::string_view box, std::string_view line);
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

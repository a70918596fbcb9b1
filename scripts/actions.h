#pragma once

#include "scripts/names.h"
#include "scripts/script_dialogs.h"
#include "scripts/user.h"

#include <chrono>
#include <span>
#include <stdexcept>

namespace tarvik {

/// What the lines of a script work on: the program, the user that acts in it, and what is looked at. A front adds how
/// time passes and who is asked for what changes from one playing to the next.
class Stage {
public:
    Stage(Program& program_, Transcript& transcript_, Watches& watches_, Answers& answers_)
        : program(program_), transcript(transcript_), watches(watches_), answers(answers_), controls(program),
          names(program, controls), user(program, controls, [this] { watches.look_at_members(); })
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
    ControlDirectory controls;
    Names names;
    User user;
    Holes holes;        ///< what stands in curly brackets in quoted words, and what is put there
    bool begun = false; ///< a line has done something
};

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

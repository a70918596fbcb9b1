#pragma once

#include "events/events.h"
#include "runs/batch_runner.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {

/// A clerk at the window of a program over this office: keys, clicks and ticks go through the event table.
template <typename Office>
class Desk {
public:
    Office office;
    TestProgram started{&office};
    Program& program = started.program;
    Form1& form1 = program.form1;
    Form4& form4 = program.form4;
    Text typed_folder; ///< for the output; empty takes the default

    void happen(EventKind kind, Control& control, char32_t key = 0)
    {
        Event event{kind, control};
        event.key = key;
        dispatch(program, event);
    }
    /// Types the command and presses Enter; the questions get these answers.
    void press_enter(TextView command, std::deque<Answer> replies = {Answer::OK})
    {
        form1.query_box().set_text(command.str());
        started.dialogs.inputs = {typed_folder};
        started.dialogs.replies = std::move(replies);
        happen(EventKind::KeyPress, form1.query_box(), U'\r');
    }
    void tick(Timer& timer) { happen(EventKind::Tick, timer); }
    /// Ticks whichever timer is on until none is.
    void run()
    {
        for (Timer* timer : form1.batch_timers()) {
            for (int guard = 0; timer->enabled() && guard < 1000; ++guard) tick(*timer);
            EXPECT_FALSE(timer->enabled());
        }
    }
    /// Presses Enter, and ticks to the end.
    void play(TextView command, std::deque<Answer> replies = {Answer::OK})
    {
        press_enter(command, std::move(replies));
        run();
    }
    /// No application is open and no timer on.
    void expect_released()
    {
        EXPECT_FALSE(form1.xlApp || form1.xlBook || form1.xlSheet || form1.wdApp || form1.wdDoc);
        EXPECT_TRUE(form1.batchgate);
        EXPECT_FALSE(run_in_progress(form1));
    }
};

} // namespace tarvik::test

#include "playback/player.h"

#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik {

namespace {

using std::chrono::milliseconds;
using namespace std::chrono_literals;

// Timers whose handlers do nothing: what fires and when.
class Timers : public testing::Test {
protected:
    Timers()
    {
        tested.program.listeners.property_changed = [this](Control& control, Property property) {
            if (property == Property::Enabled || property == Property::Interval) timers.changed(control);
        };
    }

    // "Timer1(0)@81" and so on for everything that falls due until then.
    std::string fire_until(milliseconds end)
    {
        std::string fired;
        for (auto due = timers.next(); due && due->at <= end; due = timers.next()) {
            clock.set_elapsed(due->at);
            timers.fired(*due->timer);
            const int index = due->timer->index();
            fired += std::string(due->timer->name()) + (index == no_index ? "" : "(" + std::to_string(index) + ")") +
                     "@" + std::to_string(std::chrono::duration_cast<milliseconds>(due->at).count()) + " ";
        }
        clock.set_elapsed(end);
        return fired;
    }

    test::TestProgram tested;
    Form1& form1 = tested.form1();
    VirtualClock clock{std::chrono::local_seconds{}};
    VirtualTimers timers{clock};
};

TEST_F(Timers, fire_by_due_time_then_by_name_and_index)
{
    for (auto& [index, timer] : form1.Timer1) timer.set_interval(500);
    form1.Timer4.set_enabled(true);
    form1.Timer3.set_enabled(true);
    form1.Timer1[2].set_enabled(true);
    form1.Timer1[1].set_enabled(true);
    EXPECT_EQ(fire_until(1000ms), "Timer1(1)@500 Timer1(2)@500 Timer1(1)@1000 Timer1(2)@1000 Timer3@1000 Timer4@1000 ");
}

TEST_F(Timers, count_from_the_moment_of_switching_on)
{
    EXPECT_EQ(fire_until(300ms), "");
    form1.Timer3.set_enabled(true);
    EXPECT_EQ(fire_until(1299ms), "");
    form1.Timer3.set_enabled(true);
    EXPECT_EQ(fire_until(1300ms), "Timer3@1300 ") << "a timer that runs already is not started anew";
    EXPECT_EQ(fire_until(2000ms), "");
    form1.Timer3.set_enabled(false);
    form1.Timer3.set_enabled(true);
    EXPECT_EQ(fire_until(3500ms), "Timer3@3000 ");
}

} // namespace

} // namespace tarvik

#include "office/batch_runner.h"

#include "calendar/time_of_day.h"

#include <cmath>

namespace tarvik {

namespace {

constexpr double seconds_a_day = 86400;

// Back to idle. The caption tells of the end only after a finished run.
void go_idle(Program& program, Timer& timer)
{
    Form1& form1 = program.form1;
    form1.sheetno = 1;
    timer.set_enabled(false);
    form1.batchcursor = -1;
    form1.batchgate = true;
}

void release_objects(Form1& form1)
{
    form1.xlSheet = nullptr;
    form1.xlBook = nullptr;
    form1.xlApp.reset();
    form1.wdDoc = nullptr;
    form1.wdApp.reset();
}

struct Pace {
    double elapsed; // seconds since the run's start
    double rate;    // whole seconds a sheet
};

Pace take_time(Program& program)
{
    Form1& form1 = program.form1;
    form1.runnow = time_of_day(program.platform.clock.now());
    double elapsed = sntime(form1.runnow) - sntime(form1.runstart);
    if (elapsed < 0) elapsed += seconds_a_day;
    return {elapsed, std::floor(elapsed / form1.sheetno)};
}

Text run_time(const Program& program)
{
    return time_of_day(program.platform.clock.now());
}

void show_caption(Program& program, Text caption)
{
    program.form1.window.set_caption(std::move(caption));
    program.platform.screen.refresh();
}

void report(Program& program)
{
    const Pace pace = take_time(program);
    const Form1& form1 = program.form1;
    show_caption(program, form1.runtitle + U" " + number_text(form1.sheetno - 1) + U" →" + run_time(program) + U"→：" +
                              number_text(pace.rate) + U" 秒/张。");
}

void finish(Program& program, Timer& timer)
{
    const Pace pace = take_time(program);
    Form1& form1 = program.form1;
    const double sheets = form1.sheetno - 1;
    show_caption(program, form1.runtitle + U" " + number_text(sheets) + U"   Complete" + U" " + run_time(program) +
                              U"→：" + number_text(pace.elapsed) + U" 秒。" + U"→：" + number_text(pace.rate) +
                              U" 秒/张。");
    show_caption(program, form1.window.caption() + (sheets == form1.keycount ? U" OK !" : U" ERROR !"));
    go_idle(program, timer);
}

void make_sheet(Program& program, const SheetFamily& family, TextView key)
{
    Form1& form1 = program.form1;
    family.scan(program, key);
    if (family.needs_records && !(form1.partcount > 0)) return;
    report(program);
    form1.recordcount = form1.partcount;
    family.prepare(program);
    family.sheet(program);
}

} // namespace

void start_run(Program& program, Timer& timer)
{
    Form1& form1 = program.form1;
    timer.set_enabled(true);
    form1.batchcursor = -1;
    form1.sheetno = 1;
    form1.runstart = time_of_day(program.platform.clock.now());
    set_run_title(program);
}

void set_run_title(Program& program)
{
    Form1& form1 = program.form1;
    show_caption(program, U"Tarvik 计算 ");
    form1.runtitle = form1.window.caption() + U" " + run_time(program) + U"←" + U"start:";
}

bool run_in_progress(Form1& form1)
{
    for (const Timer* timer : form1.batch_timers())
        if (timer->enabled()) return true;
    return false;
}

void batch_tick(Program& program, const SheetFamily& family)
{
    Form1& form1 = program.form1;
    Timer& timer = form1.*family.timer;
    if (!form1.batchgate) return;
    form1.batchcursor += 1;
    if (form1.batchcursor > form1.keycount) {
        finish(program, timer);
        return;
    }
    const Text key = program.module1.keylist.get(static_cast<std::size_t>(form1.batchcursor)).str();
    if (key.empty()) return;
    try {
        make_sheet(program, family, key);
    } catch (...) {
        release_objects(form1);
        go_idle(program, timer);
        throw;
    }
}

void batch_tick(Program& program, const Control& timer, std::span<const SheetFamily> families)
{
    for (const SheetFamily& family : families)
        if (&(program.form1.*family.timer) == &timer) batch_tick(program, family);
}

void close_sheet(Program& program)
{
    Form1& form1 = program.form1;
    form1.batchgate = true;
    show_caption(program, form1.window.caption() + U"   →   " + number_text(form1.keycount - form1.sheetno));
    form1.sheetno += 1;
}

} // namespace tarvik

#include "runs/batch_runner.h"

#include "calendar/calendar.h"
#include "runs/folder_walk.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tarvik {

namespace {

constexpr double seconds_a_day = 86400;

Text pace(Program& program)
{
    program.form1.runnow = run_time(program);
    return number_text(std::floor(seconds_elapsed(program) / program.form1.sheetno)) + U" 秒/张。";
}

void finish(Program& program, const SheetFamily& family)
{
    Form1& form1 = program.form1;
    const int sheets = form1.sheetno - 1;
    const Text rate = pace(program);
    show_caption(program, form1.runtitle + U" " + number_text(sheets) + U"   Complete" + U" " + form1.runnow + U"→：" +
                              number_text(seconds_elapsed(program)) + U" 秒。" + U"→：" + rate);
    show_caption(program, form1.window.caption() + (sheets == form1.keycount ? U" OK !" : U" ERROR !"));
    stop_run(program);
    program.run.stopped = false;
    if (family.finished) family.finished(program);
}

// Empty where no key is at hand, as behind the last one.
Text key_at(const Program& program, int index)
{
    return index < 0 ? Text() : program.module1.keylist.get(static_cast<std::size_t>(index)).str();
}

// A run whose rows would come from the other table makes nothing sound.
void check_table(const Program& program)
{
    if (program.form1.comp)
        throw Failure(U" 请注意：\r\n报表运行中comp被设置为TRUE，运行已经停止；请先按键e，再重新输入命令。");
}

void make_sheet(Program& program, const SheetFamily& family, TextView key)
{
    check_table(program);
    Form1& form1 = program.form1;
    family.scan(program, key);
    if (family.needs_records && !(form1.partcount > 0)) {
        program.run.passed.push_back({key.str(), U"报表中没有此关键字的记录"});
        return;
    }
    const Text rate = pace(program);
    show_caption(program,
                 form1.runtitle + U" " + number_text(form1.sheetno - 1) + U" →" + form1.runnow + U"→：" + rate);
    form1.recordcount = form1.partcount;
    family.prepare(program);
    family.sheet(program);
}

void family_tick(Program& program, const SheetFamily& family)
{
    if (family.own_tick) {
        check_table(program);
        return family.own_tick(program);
    }
    Form1& form1 = program.form1;
    if (!form1.batchgate) return;
    form1.batchcursor += 1;
    if (form1.batchcursor > form1.keycount) {
        finish(program, family);
        return;
    }
    const Text key = key_at(program, form1.batchcursor);
    if (!key.empty()) make_sheet(program, family, key);
}

// The caption is set anew, and gives the head of the coming captions.
void set_run_title(Program& program)
{
    Form1& form1 = program.form1;
    begin_record(program);
    show_caption(program, U"Tarvik 计算 ");
    form1.runtitle = form1.window.caption() + U" " + run_time(program) + U"←" + U"start:";
}

} // namespace

void start_run(Program& program, Timer& timer)
{
    Form1& form1 = program.form1;
    timer.set_enabled(true);
    form1.batchcursor = -1;
    form1.sheetno = 1;
    form1.runstart = run_time(program);
    set_run_title(program);
}

bool run_in_progress(Form1& form1)
{
    return std::ranges::any_of(form1.batch_timers(), &Timer::enabled);
}

void stop_run(Program& program)
{
    Form1& form1 = program.form1;
    for (int next = form1.batchcursor + 1; next < form1.keycount; ++next)
        if (!key_at(program, next).empty()) ++program.run.not_reached;
    form1.sheetno = 1;
    for (Timer* timer : form1.batch_timers()) timer->set_enabled(false);
    form1.batchcursor = -1;
    form1.batchgate = true;
    program.run.stop_wished = false;
    program.run.stopped = true;
}

Text run_key(const Program& program)
{
    return key_at(program, program.form1.batchcursor);
}

void batch_tick(Program& program, const SheetFamily& family)
{
    if (program.run.stop_wished) {
        stop_run(program);
        tell_failures(program, std::exchange(program.run.failures, {}));
        return;
    }
    try {
        family_tick(program, family);
    } catch (const Failure& failure) {
        const Text key = key_at(program, program.form1.batchcursor);
        if (!key.empty()) program.run.passed.push_back({key, failure.message()});
        stop_run(program);
        const auto failures = std::exchange(program.run.failures, {});
        if (failures.empty()) throw;
        throw Failure(failure.message() + U"\r\n" + failures_text(failures));
    } catch (...) {
        stop_run(program);
        throw;
    }
}

void close_sheet(Program& program)
{
    Form1& form1 = program.form1;
    form1.batchgate = true;
    show_caption(program, form1.window.caption() + U"   →   " + number_text(form1.keycount - form1.sheetno));
    form1.sheetno += 1;
}

void begin_record(Program& program)
{
    program.run = RunRecord{.number = program.run.number + 1, .started = program.platform.clock.now()};
}

void set_job_title(Program& program)
{
    set_run_title(program);
    program.form1.jobstart = run_time(program);
}

void show_caption(Program& program, Text caption)
{
    program.form1.window.set_caption(std::move(caption));
    program.platform.screen.refresh();
}

Text run_time(const Program& program)
{
    return time_of_day(program.platform.clock.now());
}

double seconds_elapsed(const Program& program)
{
    const CalendarTime& start = program.run.started;
    const CalendarTime now = program.platform.clock.now();
    const double days = steaddaf(start.year, start.month, start.day, now.year, now.month, now.day);
    return days * seconds_a_day + sntime(time_of_day(now)) - sntime(time_of_day(start));
}

} // namespace tarvik

#include "playback/player.h"

#include "platform/files/paths.h"
#include "runs/batch_runner.h"

#include <algorithm>
#include <iomanip>
#include <sstream>
#include <tuple>

namespace tarvik {

namespace fs = std::filesystem;
using namespace std::chrono;

namespace {

year_month_day date_of(const CalendarTime& time)
{
    return {year(time.year), month(static_cast<unsigned>(time.month)), day(static_cast<unsigned>(time.day))};
}

local_seconds time_of(const CalendarTime& time)
{
    return local_days(date_of(time)) + hours(time.hour) + minutes(time.minute) + seconds(time.second);
}

VirtualTime interval(const Timer& timer)
{
    return milliseconds(timer.interval());
}

} // namespace

CalendarTime VirtualClock::now() const
{
    const local_seconds time = start_ + floor<seconds>(elapsed);
    const local_days midnight = floor<days>(time);
    const year_month_day date(midnight);
    const hh_mm_ss time_of_day(time - midnight);
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            static_cast<int>(time_of_day.hours().count()),
            static_cast<int>(time_of_day.minutes().count()),
            static_cast<int>(time_of_day.seconds().count())};
}

std::optional<local_seconds> parse_time(std::string_view text)
{
    constexpr const char* form = "%Y-%m-%d %H:%M:%S";
    std::tm read{};
    std::istringstream given{std::string(text)};
    std::ostringstream written; // a time may be read from other forms
    given >> std::get_time(&read, form);
    written << std::put_time(&read, form);
    const CalendarTime time{read.tm_year + 1900, read.tm_mon + 1, read.tm_mday, read.tm_hour, read.tm_min, read.tm_sec};
    if (!given || written.str() != text || !date_of(time).ok() || time.second > 59) return std::nullopt;
    return time_of(time);
}

local_seconds local_time_now()
{
    return time_of(SystemClock().now());
}

void VirtualTimers::changed(Control& control)
{
    auto* const timer = dynamic_cast<Timer*>(&control);
    if (!timer) return;
    due_.erase(timer);
    if (timer->enabled() && timer->interval() > 0) due_[timer] = clock_.elapsed + interval(*timer);
}

std::optional<VirtualTimers::Due> VirtualTimers::next() const
{
    if (due_.empty()) return std::nullopt;
    const auto& [timer, at] = *std::ranges::min_element(
        due_, {}, [](const auto& due) { return std::tuple(due.second, due.first->name(), due.first->index()); });
    return Due{timer, at};
}

void VirtualTimers::fired(Timer& timer)
{
    if (const auto due = due_.find(&timer); due != due_.end()) due->second += interval(timer);
}

void PlayerPrinter::print(const fs::path& file, TextView name)
{
    if (!folder_) throw Failure(U"没有默认打印机，不能打印：" + name);
    const TextView document = split_path(name).name;
    std::error_code error;
    fs::create_directories(*folder_, error);
    fs::copy_file(file, free_place(document), error);
    if (error) throw Failure(U"打印失败：" + name + U"（" + from_utf8(error.message()) + U"）");
    transcript_.line("print " + json_string(document));
}

fs::path PlayerPrinter::free_place(TextView name) const
{
    const auto [stem, extension] = split_extension(name);
    fs::path place = *folder_ / path_of(name);
    std::error_code error;
    for (int copy = 2; fs::exists(place, error); ++copy) {
        const Text numbered = U" (" + number_text(copy) + U")" + extension;
        place = *folder_ / path_of(cut_to_room(stem, longest_name - name_size(numbered)).str() + numbered);
    }
    return place;
}

Session::Session(const Options& options, std::ostream& out, Dialogs* user_dialogs, Clipboard* user_clipboard)
    : Stage(program_, &out), clock(options.clock), options_(options), printer_(transcript, options.print_to),
      files_(options.installation, options.drives),
      office_(make_engines(options.engine, files_, printer_, libreoffice_, [this] { return clock.now(); })),
      program_({user_dialogs ? *user_dialogs : *this, user_clipboard ? *user_clipboard : clipboard_, clock, files_,
                *this, printer_},
               *office_)
{
    program.listeners.property_changed = [this](Control& control, Property property) {
        watches.look_at(control);
        if (property == Property::Enabled || property == Property::Interval) timers.changed(control);
        user.model_changed(control, property);
    };
}

void Session::start()
{
    tarvik::start(program);
    user.settle();
    if (!options_.notice.empty()) tell(program, options_.notice, application_title, Icon::Exclamation);
}

void Session::popup_menu()
{
    transcript.line("menu");
    menu_open_ = true;
}

// Fires the next timer that falls due until `end`; gives whether there was one.
bool Session::fire_next(VirtualTime end)
{
    const auto due = timers.next();
    if (!due || due->at > end || program.ended) return false;
    clock.elapsed = due->at;
    timers.fired(*due->timer);
    user.tick(*due->timer);
    return true;
}

void Session::pass_time(microseconds span)
{
    const VirtualTime end = clock.elapsed + span;
    while (fire_next(end)) {
    }
    clock.elapsed = end;
}

void Session::run_batches(microseconds limit)
{
    const VirtualTime end = clock.elapsed + limit;
    while (run_in_progress(program.form1))
        if (!fire_next(end)) throw ScriptFailure("the run has not ended in the time that it was given");
}

Text Session::ask(const Text& name, const std::optional<Text>& preset, bool)
{
    asked_.insert(name);
    if (const auto given = options_.values.find(name); given != options_.values.end()) return given->second;
    if (!preset) throw ScriptFailure("--set " + to_utf8(name) + "=VALUE is missing");
    return *preset;
}

void Session::begin()
{
    for (const auto& [name, value] : options_.values)
        if (!asked_.contains(name)) throw ScriptFailure("nothing asks for --set " + to_utf8(name));
}

int play(const Options& options, std::istream& script, std::ostream& out, std::ostream& errors)
{
    Session session(options, out);
    constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";
    bool held = true;
    std::string place = "start-up", line;
    try {
        session.start();
        for (int number = 1; !session.program.ended && std::getline(script, line); ++number) {
            place = "line " + std::to_string(number);
            std::string_view text = line;
            if (number == 1 && text.starts_with(byte_order_mark)) text.remove_prefix(byte_order_mark.size());
            try {
                const std::vector<Word> words = split_line(text, session.holes);
                if (!words.empty()) perform(session, words);
            } catch (const MissedExpectation& missed) {
                errors << place << ": " << missed.what() << std::endl;
                held = false;
            }
            if (!out) throw ScriptFailure("the output cannot be written");
        }
    } catch (const std::exception& failure) {
        errors << place << ": " << failure.what() << std::endl;
        return 1;
    }
    if (script.bad()) {
        errors << "the script could not be read to its end" << std::endl;
        held = false;
    }
    return held ? 0 : 1;
}

void list_names(std::ostream& out)
{
    Options options;
    options.installation = "/"; // none of its files is asked for
    const Session session(options, out);
    for (const std::string& name : all_names(session.program)) out << name << '\n';
    out.flush();
}

} // namespace tarvik

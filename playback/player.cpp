#include "playback/player.h"

#include "platform/files/system_paths.h"
#include "runs/batch_runner.h"

#include <string>

namespace tarvik {

namespace fs = std::filesystem;

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
    const fs::path wanted = *folder_ / path_of(name);
    fs::path place = wanted;
    for (int copy = 2; fs::exists(place); ++copy)
        place =
            *folder_ / path_of(text_of(wanted.stem()) + U" (" + number_text(copy) + U")" + text_of(wanted.extension()));
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

void Session::pass_time(std::chrono::microseconds span)
{
    const VirtualTime end = clock.elapsed + span;
    while (fire_next(end)) {
    }
    clock.elapsed = end;
}

void Session::run_batches(std::chrono::microseconds limit)
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

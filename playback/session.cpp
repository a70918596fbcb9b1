#include "playback/session.h"

#include "runs/batch_runner.h"
#include "scripts/script.h"

namespace tarvik {

Session::Session(const Options& options, std::ostream& out, Dialogs* user_dialogs, Clipboard* user_clipboard)
    : transcript(out), watches(transcript), clock(options.clock),
      dialogs(transcript, answers, [this] { watches.look_at_members(); }),
      screen(transcript, options.screen_width, options.screen_height), printer(transcript, options.print_to),
      files(options.installation, options.drives),
      office(make_engines(options.engine, files, printer, libreoffice, [this] { return clock.now(); })),
      program({user_dialogs ? *user_dialogs : dialogs, user_clipboard ? *user_clipboard : clipboard, clock, files,
               screen, printer},
              *office),
      stage(program, transcript, watches, answers, clock, screen, options.values)
{
    program.listeners.property_changed = [this](const Control& control, Property property) {
        watches.look_at(control);
        if (property == Property::Enabled || property == Property::Interval) stage.timers.changed(control);
        stage.user.model_changed(control, property);
    };
}

void Session::start(const Text& notice)
{
    tarvik::start(program);
    stage.user.settle();
    if (!notice.empty()) tell(program, notice, application_title, Icon::Exclamation);
}

// Fires the next timer that falls due until `end`; gives whether there was one.
bool PlayerStage::fire_next(VirtualTime end)
{
    const auto due = timers.next();
    if (!due || due->at > end || program.ended) return false;
    clock_.set_elapsed(due->at);
    timers.fired(*due->timer);
    user.tick(*due->timer);
    return true;
}

void PlayerStage::pass_time(std::chrono::microseconds span)
{
    const VirtualTime end = clock_.elapsed() + span;
    while (fire_next(end)) {
    }
    clock_.set_elapsed(end);
}

void PlayerStage::run_batches(std::chrono::microseconds limit)
{
    const VirtualTime end = clock_.elapsed() + limit;
    while (run_in_progress(program.form1))
        if (!fire_next(end)) throw ScriptFailure("the run has not ended in the time that it was given");
}

Text PlayerStage::ask(const Text& name, const std::optional<Text>& preset, bool)
{
    asked_.insert(name);
    if (const auto given = values_.find(name); given != values_.end()) return given->second;
    if (!preset) throw ScriptFailure("--set " + to_utf8(name) + "=VALUE is missing");
    return *preset;
}

void PlayerStage::begin()
{
    for (const auto& [name, value] : values_)
        if (!asked_.contains(name)) throw ScriptFailure("nothing asks for --set " + to_utf8(name));
}

} // namespace tarvik

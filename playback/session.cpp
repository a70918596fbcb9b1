#include "playback/session.h"

#include "runs/engines.h"

namespace tarvik {

Session::Session(const Options& options, std::ostream& out)
    : transcript(out), watches(transcript), clock(options.clock),
      dialogs(transcript, answers, [this] { watches.look_at_members(); }),
      screen(transcript, options.screen_width, options.screen_height), printer(transcript, options.print_to),
      files(options.installation, options.drives), office(make_engines(options.engine, files, printer, libreoffice)),
      program({dialogs, clipboard, clock, files, screen, printer}, *office), controls(program),
      names(program, controls), timers(program.form1, clock),
      user(program, controls, [this] { watches.look_at_members(); })
{
    program.listeners.property_changed = [this](const Control& control, Property property) {
        watches.look_at(control);
        if (property == Property::Enabled || property == Property::Interval) timers.changed(control);
        user.model_changed(control, property);
    };
}

void Session::start(const Text& notice)
{
    tarvik::start(program);
    user.settle();
    if (!notice.empty()) tell(program, notice, application_title, Icon::Exclamation);
}

} // namespace tarvik

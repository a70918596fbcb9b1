#include "playback/player.h"

#include "playback/session.h"
#include "scripts/actions.h"

#include <string>

namespace tarvik {

namespace {

enum class Outcome { Done, Missed, Failed };

Outcome play_line(Session& session, std::string_view line, const std::string& place, std::ostream& errors)
{
    try {
        const std::vector<Word> words = split_line(line, session.stage.holes);
        if (!words.empty()) perform(session.stage, words);
        return Outcome::Done;
    } catch (const MissedExpectation& missed) {
        errors << place << ": " << missed.what() << std::endl;
        return Outcome::Missed;
    } catch (const std::exception& failure) {
        errors << place << ": " << failure.what() << std::endl;
        return Outcome::Failed;
    }
}

bool start(Session& session, const Text& notice, std::ostream& errors)
{
    try {
        session.start(notice);
        return true;
    } catch (const std::exception& failure) {
        errors << "start-up: " << failure.what() << std::endl;
        return false;
    }
}

} // namespace

int play(const Options& options, std::istream& script, std::ostream& out, std::ostream& errors)
{
    Session session(options, out);
    if (!start(session, options.notice, errors)) return 1;
    constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";
    bool held = true;
    std::string line;
    for (int number = 1; !session.program.ended && std::getline(script, line); ++number) {
        std::string_view text = line;
        if (number == 1 && text.starts_with(byte_order_mark)) text.remove_prefix(byte_order_mark.size());
        const Outcome outcome = play_line(session, text, "line " + std::to_string(number), errors);
        if (outcome == Outcome::Failed) return 1;
        if (outcome == Outcome::Missed) held = false;
        if (!out) {
            errors << "line " << number << ": the output cannot be written" << std::endl;
            return 1;
        }
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
    for (const std::string& name : session.stage.names.all()) out << name << '\n';
    out.flush();
}

} // namespace tarvik

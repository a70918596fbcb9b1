#include "scripts/actions.h"

#include <initializer_list>
#include <utility>

namespace tarvik {

namespace {

using Words = std::span<const Word>;

constexpr double longest_time = 1e9;                             // seconds
constexpr auto given_answers = std::span(answer_words).first(4); // "none" is no reply

double decimal(const Word& word)
{
    if (const auto value = number(word.text)) return *value;
    throw ScriptFailure(word.utf8() + " is no number");
}

std::size_t whole(const Word& word)
{
    const double value = decimal(word);
    if (value < 0 || value > 1e15 || value != static_cast<double>(static_cast<std::size_t>(value)))
        throw ScriptFailure(word.utf8() + " is no place or length");
    return static_cast<std::size_t>(value);
}

std::chrono::microseconds seconds(const Word& word)
{
    const double value = decimal(word);
    if (value < 0 || value > longest_time) throw ScriptFailure(word.utf8() + " is no time that can pass");
    return std::chrono::round<std::chrono::microseconds>(std::chrono::duration<double>(value));
}

Control& control(const Stage& stage, const Word& word)
{
    if (Control* const found = find_control(stage.program, word.utf8())) return *found;
    throw ScriptFailure("unknown control " + word.utf8());
}

TextControl& box(const Stage& stage, const Word& word)
{
    if (auto* const found = dynamic_cast<TextControl*>(&control(stage, word))) return *found;
    throw ScriptFailure("only a box or a pane holds a text");
}

Selection selection(Words words)
{
    return {Position(whole(words[1])), whole(words[2])};
}

Window& window(const Stage& stage, const Word& word)
{
    if (auto* const found = dynamic_cast<Window*>(&control(stage, word))) return *found;
    throw ScriptFailure(word.utf8() + " is no window");
}

void set(Stage& stage, Words words)
{
    box(stage, words[0]).set_text(words[1].text);
    stage.watches.look_at_members();
}

// As keys and pasting do.
void replace(Stage& stage, Words words)
{
    TextControl& target = box(stage, words[0]);
    target.select(selection(words));
    target.replace_selection(words[3].text);
    stage.watches.look_at_members();
}

void mouse(Stage& stage, Words words)
{
    Control& target = control(stage, words[0]);
    const MouseButton button = meaning_of(mouse_buttons, words[2]);
    if (words.size() == 4 && !words[3].is(U"ctrl")) throw ScriptFailure("unknown word " + words[3].utf8());
    if (words[1].is(U"down")) stage.user.press(target, button, words.size() == 4);
    else if (words[1].is(U"up")) stage.user.release(target, button);
    else throw ScriptFailure("unknown word " + words[1].utf8());
}

void menu(Stage& stage, Words words)
{
    if (words[0].is(U"closed")) {
        stage.close_menu();
        stage.program.form1.menuonquery = stage.program.form1.menuonnumber = false;
        return;
    }
    const MenuEntry entry = meaning_of(menu_entries, words[0]);
    if (!stage.close_menu()) throw ScriptFailure("no context menu is open");
    stage.user.pick(entry);
}

void task(Stage& stage, Words)
{
    const Program& program = stage.program;
    const CalendarTime now = program.platform.clock.now();
    const Text today = date_text(now), last_month = date_text(now.month > 1 ? CalendarTime{now.year, now.month - 1, 1}
                                                                            : CalendarTime{now.year - 1, 12, 1});
    constexpr std::size_t year_and_month = 7;
    const Text values[] = {today, today.substr(0, year_and_month), last_month.substr(0, year_and_month),
                           program.platform.files.installation_folder()};
    for (std::size_t i = 0; i < task_holes.size(); ++i) stage.holes[Text(task_holes[i])] = values[i];
    stage.answers.of_task = true;
}

void ask(Stage& stage, Words words)
{
    if (stage.begun) throw ScriptFailure("what is asked for stands ahead of what is done");
    const bool is_file = words.size() == 3;
    if (is_file && !words[2].is(U"file")) throw ScriptFailure("unknown word " + words[2].utf8());
    const std::optional<Text> preset = words.size() > 1 ? std::optional(words[1].text) : std::nullopt;
    stage.holes[words[0].text] = stage.ask(words[0].text, preset, is_file);
}

void reply(Stage& stage, Words words)
{
    for (const Word& word : words) stage.answers.replies.push_back(meaning_of(given_answers, word, "reply"));
}

bool is_full_path(TextView path)
{
    return !path.empty() && (path[0] == U'/' || path[0] == U'\\' || (path.size() > 1 && path[1] == U':'));
}

std::optional<Text> text_or_cancel(const Word& word)
{
    if (word.is(U"cancel")) return std::nullopt;
    return word.text;
}

void file(Stage& stage, Words words)
{
    std::optional<Text> path = text_or_cancel(words[0]);
    if (path && stage.answers.of_task && !is_full_path(*path))
        path = stage.program.platform.files.installation_folder() + U"/" + *path;
    stage.answers.files.push_back(std::move(path));
}

void show(Stage& stage, Words words)
{
    for (const Word& word : words) {
        const Expression expression = resolve(stage.program, word.utf8());
        stage.transcript.line(expression.written + " = " + expression.read().shown);
    }
}

void expect(Stage& stage, Words words)
{
    const Expression expression = resolve(stage.program, words[0].utf8());
    const ScriptValue value = expression.read();
    const std::string wanted = value.is_text ? json_string(words[1].text) : words[1].utf8();
    if (value.shown == wanted) return;
    if (stage.answers.of_task) throw ScriptFailure(expression.written + " 是 " + value.shown + "，录制时是 " + wanted);
    throw MissedExpectation(expression.written + " is " + value.shown + ", not " + wanted);
}

void watch(Stage& stage, Words words)
{
    for (const Word& word : words) stage.watches.add(resolve(stage.program, word.utf8()));
}

void say(Stage& stage, Words words)
{
    std::string line;
    for (const Word& word : words) line += (&word == &words.front() ? "" : " ") + word.utf8();
    stage.transcript.line(line);
}

constexpr std::size_t any_number = 1'000'000;

struct Action {
    std::u32string_view name;
    std::size_t fewest, most; ///< words behind the name
    void (*perform)(Stage& stage, Words words);
    bool prepares = false; ///< does nothing in the program by itself
};
constexpr Action actions[] = {
    {U"click", 1, 1, [](Stage& s, Words w) { s.user.click(control(s, w[0])); }},
    {U"dblclick", 1, 1, [](Stage& s, Words w) { s.user.double_click(control(s, w[0])); }},
    {U"mouse", 3, 4, mouse},
    {U"focus", 1, 1, [](Stage& s, Words w) { s.user.focus(control(s, w[0])); }},
    {U"select", 3, 3, [](Stage& s, Words w) { box(s, w[0]).select(selection(w)); }},
    {U"set", 2, 2, set},
    {U"replace", 4, 4, replace},
    {U"clipboard", 1, 1, [](Stage& s, Words w) { s.program.platform.clipboard.set_text(w[0].text); }, true},
    {U"type", 2, 2, [](Stage& s, Words w) { s.user.type(box(s, w[0]), w[1].text); }},
    {U"menu", 1, 1, menu},
    {U"resize", 3, 3, [](Stage& s, Words w) { s.user.resize(window(s, w[0]), decimal(w[1]), decimal(w[2])); }},
    {U"minimise", 1, 1, [](Stage& s, Words w) { window(s, w[0]).set_window_state(1); }},
    {U"restore", 1, 1, [](Stage& s, Words w) { s.user.restore(window(s, w[0])); }},
    {U"open", 1, 1, [](Stage& s, Words w) { s.user.open(window(s, w[0])); }},
    {U"close", 1, 1, [](Stage& s, Words w) { s.user.close(window(s, w[0])); }},
    {U"tick", 1, 1, [](Stage& s, Words w) { s.pass_time(seconds(w[0])); }},
    {U"run", 0, 1, [](Stage& s, Words w) { s.run_batches(w.empty() ? std::chrono::seconds(86400) : seconds(w[0])); }},
    {U"stop", 0, 0, [](Stage& s, Words) { s.program.run.stop_wished = true; }},
    {U"task", 0, 0, task, true},
    {U"ask", 1, 3, ask, true},
    {U"message", 1, 1, [](Stage& s, Words w) { s.answers.messages.push_back(w[0].text); }, true},
    {U"reply", 1, any_number, reply, true},
    {U"input", 1, 1, [](Stage& s, Words w) { s.answers.inputs.push_back(text_or_cancel(w[0])); }, true},
    {U"file", 1, 1, file, true},
    {U"show", 1, any_number, show},
    {U"expect", 2, 2, expect},
    {U"watch", 1, any_number, watch},
    {U"say", 1, any_number, say},
};

struct ButtonsRow {
    Buttons buttons;
    std::string_view word;
    std::initializer_list<Answer> offered;
};
const ButtonsRow button_rows[] = {
    {Buttons::OK, "OK", {Answer::OK}},
    {Buttons::OKCancel, "OKCancel", {Answer::OK, Answer::Cancel}},
    {Buttons::YesNo, "YesNo", {Answer::Yes, Answer::No}},
    {Buttons::YesNoCancel, "YesNoCancel", {Answer::Yes, Answer::No, Answer::Cancel}},
};

} // namespace

Answer Stage::message(const Message& message)
{
    watches.look_at_members();
    const ButtonsRow& row = *std::ranges::find(button_rows, message.buttons, &ButtonsRow::buttons);
    Answer reply = Answer::OK;
    std::string complaint;
    if (message.buttons != Buttons::OK) {
        const bool is_left = !answers.replies.empty();
        reply = is_left ? answers.replies.front() : Answer::None;
        if (is_left) answers.replies.pop_front();
        if (std::ranges::find(row.offered, reply) == row.offered.end()) {
            complaint = is_left ? "a message box does not offer the reply " + word_of(answer_words, reply)
                                : "no reply was left for a message box";
            reply = Answer::None;
        }
    }
    transcript.line("message " + json_string(message.title) + " " + json_string(message.text) + " " +
                    std::string(row.word) + " " + word_of(icon_words, message.icon) + " -> " +
                    word_of(answer_words, reply));
    if (answers.of_task) compare(message);
    if (reply == Answer::None) throw ScriptFailure(complaint);
    return reply;
}

// The answer was meant for another question, and what follows for another course of things.
void Stage::compare(const Message& message)
{
    if (answers.messages.empty()) throw ScriptFailure("录制时没有这条提示：" + json_string(message.text));
    const Text expected = std::move(answers.messages.front());
    answers.messages.pop_front();
    if (message.text != expected)
        throw ScriptFailure("提示是" + json_string(message.text) + "，录制时是" + json_string(expected));
}

std::optional<Text> Stage::open_file(TextView filter)
{
    std::optional<Text> chosen = choose_file("open", filter);
    if (chosen && answers.of_task && !program.platform.files.file_exists(*chosen))
        throw ScriptFailure("没有这个文件：" + to_utf8(*chosen));
    return chosen;
}

Text Stage::input(TextView title, TextView prompt, TextView preset)
{
    const std::string line = "inputbox " + json_string(title) + " " + json_string(prompt) + " " + json_string(preset);
    return answer_box(answers.inputs, "an input box", line).value_or(Text{});
}

std::optional<Text> Stage::choose_file(std::string_view kind, TextView filter)
{
    return answer_box(answers.files, "a file dialog", "filedialog " + std::string(kind) + " " + json_string(filter));
}

std::optional<Text> Stage::answer_box(std::deque<std::optional<Text>>& queue, std::string_view box,
                                      std::string_view line)
{
    watches.look_at_members();
    const std::string beginning = std::string(line) + " -> ";
    if (queue.empty()) {
        transcript.line(beginning + "none");
        throw ScriptFailure("no answer was left for " + std::string(box));
    }
    std::optional<Text> answer = std::move(queue.front());
    queue.pop_front();
    transcript.line(beginning + (answer ? json_string(*answer) : "cancel"));
    return answer;
}

void check_left_over(const Stage& stage)
{
    const Answers& answers = stage.answers;
    if (!answers.messages.empty())
        throw ScriptFailure("录制时的提示没有出现：" + json_string(answers.messages.front()));
    if (!answers.empty()) throw ScriptFailure("录制时的询问没有出现，有一个回答没有用上");
}

void perform(Stage& stage, Words line)
{
    const Word& name = line.front();
    const Words words = line.subspan(1);
    const auto* action = std::ranges::find(actions, std::u32string_view(name.text), &Action::name);
    if (action == std::end(actions)) throw ScriptFailure("unknown action " + name.utf8());
    if (words.size() < action->fewest) throw ScriptFailure(name.utf8() + " lacks a word");
    if (words.size() > action->most)
        throw ScriptFailure(name.utf8() + " has a word too many: " + words[action->most].utf8());
    if (!action->prepares && !std::exchange(stage.begun, true)) stage.begin();
    action->perform(stage, words);
    if (!action->prepares && stage.answers.of_task && !stage.program.ended && !stage.waits()) check_left_over(stage);
}

} // namespace tarvik

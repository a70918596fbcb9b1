#include "playback/actions.h"

#include "playback/passing_time.h"

#include <algorithm>

namespace tarvik {

namespace {

using Words = std::span<const Word>;

constexpr double longest_time = 1e9; // seconds

template <typename Meaning>
struct Named {
    std::u32string_view word;
    Meaning meaning;
};
constexpr Named<MouseButton> mouse_buttons[] = {
    {U"left", MouseButton::Left}, {U"middle", MouseButton::Middle}, {U"right", MouseButton::Right}};
constexpr Named<MenuEntry> menu_entries[] = {
    {U"copy1", MenuEntry::copy1}, {U"paste1", MenuEntry::paste1}, {U"nothing", MenuEntry::nothing}};

template <typename Rows>
auto meaning_of(const Rows& rows, const Word& word)
{
    for (const auto& row : rows)
        if (word.text == row.word) return row.meaning;
    throw ScriptFailure("unknown word " + word.utf8());
}

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

VirtualTime seconds(const Word& word)
{
    const double value = decimal(word);
    if (value < 0 || value > longest_time) throw ScriptFailure(word.utf8() + " is no time that can pass");
    return std::chrono::round<VirtualTime>(std::chrono::duration<double>(value));
}

const AnyControl& control(Session& session, const Word& word)
{
    return session.controls.at(word.utf8());
}

Window& window(Session& session, const Word& word)
{
    if (auto* const* found = std::get_if<Window*>(&control(session, word))) return **found;
    throw ScriptFailure(word.utf8() + " is no window");
}

// The user

void click(Session& session, Words words)
{
    session.user.click(control(session, words[0]));
}

void dblclick(Session& session, Words words)
{
    session.user.double_click(control(session, words[0]));
}

void mouse(Session& session, Words words)
{
    const AnyControl& target = control(session, words[0]);
    const MouseButton button = meaning_of(mouse_buttons, words[2]);
    if (words.size() == 4 && !words[3].is(U"ctrl")) throw ScriptFailure("unknown word " + words[3].utf8());
    if (words[1].is(U"down")) session.user.press(target, button, words.size() == 4);
    else if (words[1].is(U"up")) session.user.release(target, button);
    else throw ScriptFailure("unknown word " + words[1].utf8());
}

void focus(Session& session, Words words)
{
    session.user.focus(control(session, words[0]));
}

void select(Session& session, Words words)
{
    session.user.select(control(session, words[0]), {Position(whole(words[1])), whole(words[2])});
}

void set(Session& session, Words words)
{
    session.user.set_text(control(session, words[0]), words[1].text);
}

void type(Session& session, Words words)
{
    session.user.type(control(session, words[0]), words[1].text);
}

void menu(Session& session, Words words)
{
    const MenuEntry entry = meaning_of(menu_entries, words[0]);
    if (!session.screen.close_menu()) throw ScriptFailure("no context menu is open");
    session.user.pick(entry);
}

void resize(Session& session, Words words)
{
    session.user.resize(window(session, words[0]), decimal(words[1]), decimal(words[2]));
}

void minimise(Session& session, Words words)
{
    session.user.minimise(window(session, words[0]));
}

void restore(Session& session, Words words)
{
    session.user.restore(window(session, words[0]));
}

void close(Session& session, Words words)
{
    session.user.close(window(session, words[0]));
}

// Time

void tick(Session& session, Words words)
{
    pass_time(session, seconds(words[0]));
}

void run(Session& session, Words words)
{
    run_batches(session, words.empty() ? std::chrono::seconds(86400) : seconds(words[0]));
}

// Answers

void reply(Session& session, Words words)
{
    for (const Word& word : words) {
        const Answer answer = answer_named(word.text);
        if (answer == Answer::None) throw ScriptFailure("unknown reply " + word.utf8());
        session.answers.replies.push_back(answer);
    }
}

std::optional<Text> text_or_cancel(const Word& word)
{
    if (word.is(U"cancel")) return std::nullopt;
    return word.text;
}

void input(Session& session, Words words)
{
    session.answers.inputs.push_back(text_or_cancel(words[0]));
}

void file(Session& session, Words words)
{
    session.answers.files.push_back(text_or_cancel(words[0]));
}

// Looking

void show(Session& session, Words words)
{
    for (const Word& word : words) {
        const Expression expression = session.names.resolve(word.utf8());
        session.transcript.line(expression.written + " = " + printed(expression.read()));
    }
}

void expect(Session& session, Words words)
{
    const Expression expression = session.names.resolve(words[0].utf8());
    const Value value = expression.read();
    if (matches(value, words[1].text)) return;
    const bool is_text = std::holds_alternative<Text>(value);
    throw MissedExpectation(expression.written + " is " + printed(value) + ", not " +
                            (is_text ? json_string(words[1].text) : words[1].utf8()));
}

void watch(Session& session, Words words)
{
    for (const Word& word : words) session.watches.add(session.names.resolve(word.utf8()));
}

void say(Session& session, Words words)
{
    std::string line;
    for (const Word& word : words) line += (&word == &words.front() ? "" : " ") + word.utf8();
    session.transcript.line(line);
}

constexpr std::size_t any_number = 1'000'000;

struct Action {
    std::u32string_view name;
    std::size_t fewest, most; ///< words behind the name
    void (*perform)(Session& session, Words words);
};
constexpr Action actions[] = {
    {U"click", 1, 1, click},
    {U"dblclick", 1, 1, dblclick},
    {U"mouse", 3, 4, mouse},
    {U"focus", 1, 1, focus},
    {U"select", 3, 3, select},
    {U"set", 2, 2, set},
    {U"type", 2, 2, type},
    {U"menu", 1, 1, menu},
    {U"resize", 3, 3, resize},
    {U"minimise", 1, 1, minimise},
    {U"restore", 1, 1, restore},
    {U"close", 1, 1, close},
    {U"tick", 1, 1, tick},
    {U"run", 0, 1, run},
    {U"reply", 1, any_number, reply},
    {U"input", 1, 1, input},
    {U"file", 1, 1, file},
    {U"show", 1, any_number, show},
    {U"expect", 2, 2, expect},
    {U"watch", 1, any_number, watch},
    {U"say", 1, any_number, say},
};

} // namespace

void perform(Session& session, Words line)
{
    const Word& name = line.front();
    const Words words = line.subspan(1);
    const auto* action = std::ranges::find(actions, std::u32string_view(name.text), &Action::name);
    if (action == std::end(actions)) throw ScriptFailure("unknown action " + name.utf8());
    if (words.size() < action->fewest) throw ScriptFailure(name.utf8() + " lacks a word");
    if (words.size() > action->most)
        throw ScriptFailure(name.utf8() + " has a word too many: " + words[action->most].utf8());
    action->perform(session, words);
}

} // namespace tarvik

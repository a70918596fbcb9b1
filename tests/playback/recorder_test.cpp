#include "platform/files/paths.h"
#include "playback/player.h"
#include "runs/batch_runner.h"
#include "scripts/actions.h"
#include "scripts/recorder.h"
#include "tests/support/places.h"
#include "tests/support/test_program.h"
#include "tests/support/work_names.h"

#include <gtest/gtest.h>

#include <random>
#include <sstream>

namespace tarvik {

namespace {

namespace fs = std::filesystem;
using test::TemporaryFolder;

const std::vector<Text> files{U"story.txt", U"table.txt", U"3137.txt", U"none.txt"};
const std::vector<Text> texts = [] {
    std::vector<Text> parts(1);
    for (const char32_t character : std::u32string_view(U"查寻|a||2|An|An docket|An label|An statistic|An kqtest|"
                                                        U"An appear|An disappear|An wodben|{今天}|x\"y\\z|1 2"))
        if (character == U'|') parts.emplace_back();
        else parts.back() += character;
    return parts;
}();

using Random = std::mt19937;
template <typename Items>
const auto& any_of(Random& random, const Items& items)
{
    return *std::next(std::begin(items), static_cast<std::ptrdiff_t>(random() % std::size(items)));
}

/// A user who answers whatever comes to mind.
class RandomAnswers final : public Dialogs {
public:
    RandomAnswers(Random& random, const Text& installation) : random_(random), installation_(installation) {}
    Answer message(const Message& message) override
    {
        switch (message.buttons) {
        case Buttons::OKCancel: return any_of(random_, std::vector{Answer::OK, Answer::OK, Answer::Cancel});
        case Buttons::YesNo: return any_of(random_, std::vector{Answer::Yes, Answer::No});
        case Buttons::YesNoCancel: return any_of(random_, std::vector{Answer::Yes, Answer::No, Answer::Cancel});
        default: return Answer::OK;
        }
    }
    Text input(TextView, TextView, TextView) override { return any_of(random_, std::vector<Text>{U"", U"d:\\out\\"}); }
    std::optional<Text> open_file(TextView) override
    {
        if (random_() % 5 == 0) return std::nullopt;
        return installation_ + U"/" + files[random_() % 3];
    }
    std::optional<Text> save_file(TextView) override
    {
        if (random_() % 3 == 0) return std::nullopt;
        return U"d:\\" + any_of(random_, files);
    }

private:
    Random& random_;
    const Text& installation_;
};

Options options_of(const TemporaryFolder& root)
{
    Options options;
    options.installation = root.path() / "installation";
    options.drives['d'] = root.path() / "d";
    options.clock = *parse_time("2024-03-01 09:05:07");
    return options;
}

/// The program with a user at its window, who does what the window's controls make of keys and mouse.
class Desk {
public:
    Desk(const TemporaryFolder& root, Random& random)
        : random_(random), installation_(text_of(options_of(root).installation)), answers_(random, installation_),
          dialogs_([this]() -> Dialogs& { return answers_; }, recorder_), clipboard_(own_clipboard_, recorder_),
          session_(options_of(root), out_, &dialogs_, &clipboard_)
    {
        program_.listeners.property_changed = [this](Control& control, Property property) {
            recorder_.model_changed(control, property);
            if (property == Property::Focus) asked_ = &control;
            if (property == Property::Enabled || property == Property::Interval) timers_.changed(control);
        };
        program_.listeners.pane_edited = [this](const auto&... what) { recorder_.pane_edited(what...); };
        start(program_);
        recorder_.remember_opening();
        for (Window* window : {&program_.form1.window, &program_.form3.window}) send({EventKind::Resize, *window});
        recorder_.start();
    }

    void act()
    {
        constexpr void (Desk::*acts[])() = {&Desk::press_button, &Desk::press_button, &Desk::type,      &Desk::type,
                                            &Desk::use_pane,     &Desk::use_menu,     &Desk::pass_time, &Desk::set_box,
                                            &Desk::paste,        &Desk::use_designer};
        (this->*any_of(random_, acts))();
    }
    /// What the clipboard holds, whoever put it there, comes into the number box and leaves the clipboard.
    void paste_by_menu()
    {
        mouse(program_.form1.number_box(), EventKind::MouseDown, MouseButton::Right);
        Event picked{EventKind::Menu, program_.form1.window};
        picked.entry = MenuEntry::paste1;
        send(picked);
    }
    /// A run that is in progress then goes on to its end.
    std::vector<std::string> finish()
    {
        std::vector<std::string> script = recorder_.finish();
        while (run_in_progress(program_.form1)) tick();
        return script;
    }
    Program& program() { return program_; }

private:
    void send(Event event)
    {
        recorder_.send(event);
        if (Control* const asked = std::exchange(asked_, nullptr)) focus(*asked);
    }
    void focus(Control& control)
    {
        if (focus_ == &control) return;
        if (Control* const old = std::exchange(focus_, &control)) send({EventKind::LostFocus, *old});
        send({EventKind::GotFocus, control});
    }
    void mouse(Control& control, EventKind kind, MouseButton button = MouseButton::Left, bool ctrl = false)
    {
        Event event{kind, control};
        event.button = button;
        event.ctrl = ctrl;
        send(event);
    }
    void click(Control& control)
    {
        if (random_() % 3 > 0) {
            focus(control);
            for (const EventKind kind : {EventKind::MouseDown, EventKind::MouseUp}) mouse(control, kind);
        }
        send({EventKind::Click, control}); // a key of the keyboard clicks alone
        if (random_() % 2 == 0) focus(program_.form1.query_box());
    }
    template <typename Box>
    void select(Box& box, std::size_t size)
    {
        const std::size_t from = random_() % (size + 1);
        box.select({Position::at_offset(from), random_() % 3 == 0 ? 0 : random_() % (size - from + 1)});
    }
    TextBox& main_box() { return program_.form1.Text1[any_of(random_, std::vector{1, 1, 1, 2, 4, 5})]; }

    void press_button()
    {
        Form1& form1 = program_.form1;
        std::vector<Control*> buttons{&form1.window,
                                      &form1.Command3,
                                      &form1.Command6,
                                      &form1.Option1,
                                      &form1.Option2,
                                      &form1.Option3,
                                      &program_.form3.Command1[0]};
        for (auto* keys : {&form1.Command1, &form1.Command2, &form1.Command7, &form1.Command8, &form1.Command9})
            for (auto& [index, key] : *keys) buttons.push_back(&key);
        for (int i = 0; i < 6; ++i) buttons.push_back(&form1.Command1[0]);
        click(*any_of(random_, buttons));
    }
    void press(TextBox& box, char32_t key)
    {
        Event event{EventKind::KeyPress, box};
        event.key = key;
        recorder_.send(event);
        if (!event.eaten && key >= U' ') box.replace_selection(Text(1, key));
        if (!event.eaten && key == U'\r' && box.multi_line()) box.replace_selection(U"\r\n");
        if (Control* const asked = std::exchange(asked_, nullptr)) focus(*asked);
    }
    void type()
    {
        TextBox& box = main_box();
        focus(box);
        if (random_() % 2 == 0) box.select({Position(), box.text().size()});
        if (random_() % 4 == 0) select(box, box.text().size());
        if (random_() % 8 == 0) mouse(box, EventKind::DblClick);
        for (const char32_t key : any_of(random_, texts)) press(box, key);
        if (random_() % 2 == 0) press(box, any_of(random_, std::u32string_view(U"\r\r\r\x1bqzpce/?;:,.")));
        if (box.text().size() > 0 && random_() % 6 == 0) box.set_text(box.text().substr(1)); // Backspace at its start
    }
    void use_pane()
    {
        Pane& pane = *any_of(random_, program_.form1.panes());
        focus(pane);
        select(pane, pane.content().size());
        const MouseButton button =
            any_of(random_, std::vector{MouseButton::Left, MouseButton::Left, MouseButton::Middle});
        mouse(pane, EventKind::MouseDown, button, random_() % 2 == 0);
        mouse(pane, EventKind::MouseUp, button);
        if (random_() % 3 == 0) pane.replace_selection(any_of(random_, texts));
    }
    void use_menu()
    {
        Control* const places[] = {&program_.form1.query_box(), &program_.form1.number_box(),
                                   &program_.form1.RichTextBox1, &program_.form1.RichTextBox2};
        Control& place = *any_of(random_, places);
        mouse(place, EventKind::MouseDown, MouseButton::Right);
        if (random_() % 4 == 0) return mouse(place, EventKind::MouseUp, MouseButton::Right);
        recorder_.menu_closed();
        program_.form1.menuonquery = program_.form1.menuonnumber = false;
        Event picked{EventKind::Menu, program_.form1.window};
        picked.entry = any_of(random_, std::vector{MenuEntry::copy1, MenuEntry::paste1});
        if (random_() % 4 > 0) send(picked);
    }
    void paste()
    {
        if (random_() % 2 == 0) clipboard_.set_text(any_of(random_, texts)); // copied by the keyboard
        else own_clipboard_.set_text(any_of(random_, texts));                // by another program
        TextBox& box = main_box();
        if (random_() % 2 == 0) box.replace_selection(clipboard_.text());
    }
    void set_box()
    {
        program_.form3.Text1[any_of(random_, std::vector{0, 1, 2, 3, 4, 5})].set_text(any_of(random_, texts));
        Window& window = program_.form3.window;
        if (random_() % 3 > 0) return;
        if (window.visible()) {
            send({EventKind::Close, window});
            window.set_visible(false);
        } else window.set_visible(true);
    }
    void use_designer()
    {
        Form4& form4 = program_.form4;
        TextBox& box = (random_() % 2 == 0 ? form4.Text1 : form4.Text2)[static_cast<int>(random_() % 6)];
        focus(box);
        if (random_() % 3 == 0) click(box);
        if (random_() % 3 == 0) box.set_text(any_of(random_, texts));
        if (random_() % 4 == 0) click(random_() % 2 == 0 ? form4.Command1 : form4.Command3);
    }
    void pass_time()
    {
        for (std::size_t ticks = random_() % 8; ticks > 0 && timers_.next(); --ticks) tick();
    }
    void tick()
    {
        const auto due = *timers_.next();
        session_.clock.elapsed = due.at;
        timers_.fired(*due.timer);
        send({EventKind::Tick, *due.timer});
    }

    Random& random_;
    Text installation_;
    std::ostringstream out_;
    RandomAnswers answers_;
    OverheardDialogs dialogs_;
    PlayerClipboard own_clipboard_;
    OverheardClipboard clipboard_;
    Session session_;
    Program& program_ = session_.program;
    VirtualTimers& timers_ = session_.timers;
    Recorder recorder_{program_};
    Control *focus_ = nullptr, *asked_ = nullptr;
};

void furnish(const TemporaryFolder& root)
{
    fs::create_directories(root.path() / "installation");
    fs::create_directories(root.path() / "d");
    root.write("installation/story.txt", "第一页。a story\r\nof a few lines，a\r\nand an end a。\r\n");
    root.write("installation/table.txt", "编号\t名称\tdate\r\n1\tab\t2024-01-02\r\n2\tac\t2024-01-05\r\n3\tab\t\r\n");
    root.write("installation/coclus.txt", "1\t2\r\n");
    for (const char* name : {"3137.txt", "3138.txt", "3139.txt", "z2.xlsx", "automation.bin"})
        fs::copy_file(fs::path(test::source_folder()) / "installation" / name, root.path() / "installation" / name);
}

/// What there is to see and what stands in the files, a line each.
std::vector<std::string> state(Program& program, const TemporaryFolder& root)
{
    std::vector<std::string> lines;
    for (const std::string& name : test::work_names(program))
        lines.push_back(name + " = " + resolve(program, name).read().shown);
    for (const auto& [name, held] : test::files_below(root.path())) lines.emplace_back(name).append(": ").append(held);
    for (std::string& line : lines) line = test::replaced(line, root.path().string(), "$");
    std::sort(lines.begin(), lines.end());
    return lines;
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines) text += line + "\n";
    return text;
}

} // namespace

// What a user does at random is recorded in one program and played in another.
TEST(Recording, plays_to_what_was_recorded)
{
    const auto wished = [](const char* name, unsigned usual) {
        const char* const given = std::getenv(name);
        return given ? static_cast<unsigned>(std::atoi(given)) : usual;
    };
    const unsigned first = wished("TARVIK_SEED", 0), sessions = wished("TARVIK_SESSIONS", 60);
    for (unsigned seed = first; seed < first + sessions; ++seed) {
        Random random(seed);
        const TemporaryFolder here, there;
        furnish(here);
        furnish(there);
        Desk desk(here, random);
        for (int acts = 0; acts < 40 && !desk.program().ended; ++acts) desk.act();
        desk.paste_by_menu();
        const std::vector<std::string> script = desk.finish();
        std::ostringstream transcript;
        Session session(options_of(there), transcript);
        session.start();
        std::size_t line = 0;
        try {
            for (; line < script.size(); ++line) perform(session, split_line(script[line], session.holes));
        } catch (const std::exception& failure) {
            FAIL() << "seed " << seed << ": " << script[line] << ": " << failure.what() << "\n" << joined(script);
        }
        const auto recorded = state(desk.program(), here), played = state(session.program, there);
        std::vector<std::string> other;
        std::ranges::set_symmetric_difference(recorded, played, std::back_inserter(other));
        ASSERT_EQ(joined(other), "") << "seed " << seed << "\n" << joined(script);
    }
}

} // namespace tarvik

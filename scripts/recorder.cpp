#include "scripts/recorder.h"

#include "runs/batch_runner.h"
#include "scripts/names.h"

#include <utility>

namespace tarvik {

namespace {

constexpr char32_t enter = U'\r', first_character = 32;

bool is_pane(const Control& control)
{
    return dynamic_cast<const Pane*>(&control) != nullptr;
}

Selection selection_of(const Control& control)
{
    const auto* text = dynamic_cast<const TextControl*>(&control);
    return text ? text->selection() : Selection{};
}

// Whether a user does something by it that a line may be written of.
bool acts(const Event& event)
{
    const bool passes = event.kind == EventKind::Tick || event.kind == EventKind::GotFocus ||
                        event.kind == EventKind::LostFocus || event.kind == EventKind::Resize;
    return !passes && has_handler(event);
}

// Whether the main window keeps a flag of who has the focus for this one.
bool is_flagged(const Control* control)
{
    return control && control->form() == FormId::Form1 && (is_pane(*control) || control->name() == "Text1");
}

} // namespace

std::vector<TextBox*> Recorder::boxes() const
{
    std::vector<TextBox*> boxes{&program_.form1.page_size_box()};
    for (auto& [index, box] : program_.form3.Text1) boxes.push_back(&box);
    for (TextBox* box : program_.form4.design_boxes()) boxes.push_back(box);
    boxes.push_back(&program_.form1.number_box());
    boxes.push_back(&program_.form1.query_box());
    return boxes;
}

void Recorder::remember_opening()
{
    for (const TextBox* box : boxes()) opening_[box] = box->text();
}

void Recorder::restore_opening()
{
    for (TextBox* box : boxes()) box->set_text(opening_[box]);
}

void Recorder::start()
{
    steps_.clear();
    answers_.clear();
    edited_.clear();
    reached_.clear();
    selected_.clear();
    written_focus_ = written_designer_ = nullptr;
    menu_left_ = false;
    ticks_ = 0;
    clipboard_ = [](const auto&) {};
    query_ = program_.form1.query_box().text();
    on_ = true;
    write_opening();
}

void Recorder::write_opening()
{
    Form1& form1 = program_.form1;
    if (!program_.opened.path.empty()) {
        add("file", {}, file_word(program_.opened.path));
        act("click", form1.Command1[0]);
    }
    for (const TextBox* box : boxes())
        if (box->text() != opening_[box]) add("set", script_name(*box), {}, box->text());
    for (const OptionButton* option : form1.options())
        if (option->value()) act("click", *option);
}

std::vector<std::string> Recorder::finish()
{
    write_edits();
    if (run_in_progress(program_.form1)) {
        add("run");
        add("expect", {}, "runstopped False");
    }
    if (focus_ && focus_ != written_focus_ && (is_flagged(focus_) || is_flagged(written_focus_))) act("focus", *focus_);
    write_menu_end();
    on_ = false;
    std::vector<std::string> lines{"task"};
    for (const auto& [action, control, words, text, before] : steps_) {
        lines.push_back(action);
        for (const std::string& word : {control, words, text ? quoted_word(*text) : std::string()})
            if (!word.empty()) lines.back() += " " + word;
    }
    return lines;
}

void Recorder::send(Event& event)
{
    if (event.kind == EventKind::GotFocus) {
        focus_ = &event.control;
        if (event.control.form() == FormId::Form4 && has_handler(event)) designer_focus_ = focus_;
    }
    if (!on_) return dispatch(program_, event);
    write_edits();
    if (acts(event)) {
        write_ticks();
        if (event.kind != EventKind::Menu) write_menu_end();
    }
    write_what_is_used(event);
    const Before before = look(event);
    asked_focus_ = nullptr;
    in_event_ = true;
    try {
        dispatch(program_, event);
    } catch (...) {
        in_event_ = false;
        throw;
    }
    in_event_ = false;
    write_event(event, before);
    if (asked_focus_) written_focus_ = asked_focus_;
    query_ = program_.form1.query_box().text();
    if (!run_in_progress(program_.form1) && (ticks_ > 0 || program_.run.number != before.run)) write_run_end();
}

Recorder::Before Recorder::look(const Event& event) const
{
    const Form1& form1 = program_.form1;
    const bool over_menu = (&event.control == &form1.query_box() && form1.menuonquery) ||
                           (&event.control == &form1.number_box() && form1.menuonnumber);
    return {program_.run.number, over_menu, selection_of(event.control)};
}

// Selections and the focus, where the event's handler goes by them.
void Recorder::write_what_is_used(const Event& event)
{
    if (event.kind == EventKind::Menu) {
        if (focus_ && focus_ != written_focus_) act("focus", *focus_);
        if (focus_) write_selection(*focus_);
    }
    if (event.kind == EventKind::MouseUp) {
        const bool drops_it = is_pane(event.control) && event.button == MouseButton::Left;
        if (look(event).pastes || (is_pane(event.control) && !(drops_it && selection_of(event.control).length == 0)))
            write_selection(event.control);
    }
    const bool of_pair = event.kind == EventKind::Click && &event.control == &program_.form4.Preview;
    if (of_pair && designer_focus_ != written_designer_ && designer_focus_) act("focus", *designer_focus_);
}

void Recorder::write_event(const Event& event, const Before& before)
{
    if (!has_handler(event)) return;
    switch (event.kind) {
    case EventKind::KeyPress: return write_key(event);
    case EventKind::MouseDown:
    case EventKind::MouseUp: return write_mouse(event, before);
    case EventKind::Click: return act("click", event.control);
    case EventKind::DblClick: return act("dblclick", event.control);
    case EventKind::Menu: return add("menu", {}, word_of(menu_entries, event.entry));
    case EventKind::Close:
        if (event.control.form() == FormId::Form1) answers_.clear(); // the end of the recording
        else add("close", script_name(event.control));
        return;
    case EventKind::Tick:
        if (event.control.name() == "Timer1") return; // a pane that moves
        ticking_ = dynamic_cast<const Timer*>(&event.control);
        ++ticks_;
        return;
    default: return;
    }
}

// A character that no handler knew is part of what the user has typed into the box.
void Recorder::write_key(const Event& event)
{
    if (!event.known && event.key >= first_character) return;
    const auto* box = dynamic_cast<const TextBox*>(&event.control);
    act("type", *box, {}, Text(1, event.key));
    if (event.eaten) return;
    if (event.key >= first_character) reached_[box] = box->text() + event.key;
    if (event.key == enter && box->multi_line()) reached_[box] = box->text() + U"\r\n";
}

void Recorder::write_mouse(const Event& event, const Before& before)
{
    const bool down = event.kind == EventKind::MouseDown, pane = is_pane(event.control);
    const std::string words = (down ? "down " : "up ") + word_of(mouse_buttons, event.button);
    if (event.control.name() == "Command2") return; // moves a pane
    if (down) {
        const bool enlarges = pane && event.button == MouseButton::Middle && event.ctrl;
        if (enlarges || event.button == MouseButton::Right)
            act("mouse", event.control, words + (enlarges ? " ctrl" : ""));
        return;
    }
    if (pane && event.button == MouseButton::Left && before.selection.length == 0) act("click", event.control);
    else if (pane || before.pastes) add("mouse", script_name(event.control), words);
}

void Recorder::write_edits()
{
    if (!on_ || (edited_.empty() && reached_.empty())) return;
    write_ticks();
    std::set<const TextBox*> boxes = std::exchange(edited_, {});
    for (const auto& [box, text] : std::exchange(reached_, {})) {
        if (text == box->text()) boxes.erase(box);
        else boxes.insert(box);
    }
    for (const TextBox* box : boxes) write_set(*box);
    query_ = program_.form1.query_box().text();
}

// The query box forgets results when it is changed, also when it then holds the same again.
void Recorder::write_set(const TextBox& box)
{
    const bool query = &box == &program_.form1.query_box();
    const std::string name = script_name(box);
    if (query && box.text() == query_) add("set", name, {}, query_ + U" ", query_);
    add("set", name, {}, box.text(), query ? std::optional(query_) : std::nullopt);
}

void Recorder::write_selection(const Control& control)
{
    if (selected_.erase(&control) == 0) return;
    const Selection selection = selection_of(control);
    add("select", script_name(control),
        std::to_string(selection.start.number()) + " " + std::to_string(selection.length));
}

void Recorder::write_menu_end()
{
    if (std::exchange(menu_left_, false)) add("menu", {}, "closed");
}

void Recorder::write_ticks()
{
    constexpr double milliseconds = 1000;
    if (std::exchange(ticks_, 0) == 0) return;
    add("tick", {}, to_utf8(number_text(ticks_ * ticking_->interval() / milliseconds)));
}

void Recorder::write_run_end()
{
    if (std::exchange(ticks_, 0) > 0) add("run");
    const RunRecord& run = program_.run;
    add("expect", {}, "savedcount " + std::to_string(run.files.size()));
    add("expect", {}, run.stopped ? "runstopped True" : "runstopped False");
}

void Recorder::act(std::string_view action, const Control& control, std::string words, std::optional<Text> text)
{
    written_focus_ = &control;
    if (control.form() == FormId::Form4) written_designer_ = &control;
    add(std::string(action), script_name(control), std::move(words), std::move(text));
}

void Recorder::add(std::string action, std::string control, std::string words, std::optional<Text> text,
                   std::optional<Text> before)
{
    write_ticks();
    Step step{std::move(action), std::move(control), std::move(words), std::move(text), std::move(before)};
    if (answers_.empty() && joined_to_last(step)) return;
    for (Step& answer : std::exchange(answers_, {})) steps_.push_back(std::move(answer));
    steps_.push_back(std::move(step));
}

bool Recorder::joined_to_last(Step& step)
{
    if (steps_.empty() || steps_.back().control != step.control) return false;
    Step& last = steps_.back();
    if (step.action == "dblclick" && last.action == "click") {
        last.action = step.action;
        return true;
    }
    if (step.action != last.action) return false;
    if (step.action == "type") {
        *last.text += *step.text;
        return true;
    }
    // A box that was changed and changed back has been changed.
    if (step.action == "set" && step.text != last.before) {
        last.text = std::move(step.text);
        return true;
    }
    return false;
}

} // namespace tarvik

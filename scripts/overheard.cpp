#include "scripts/recorder.h"

#include "platform/files/paths.h"
#include "scripts/names.h"

/// What a recorder hears from dialogs, clipboard and model.
namespace tarvik {

namespace {

Text text_from(const TextSource& source)
{
    Text text;
    source([&text](TextView part) { text += part.str(); });
    return text;
}

// Wherever the installation folder lies when the script is played.
std::string quoted_anywhere(TextView text, TextView installation)
{
    const Text whole = text.str();
    std::string word = "\"";
    for (std::size_t from = 0;;) {
        const std::size_t place = whole.find(std::u32string_view(installation.str()), from);
        const std::string part = quoted_word(whole.substr(from, place == Text::npos ? place : place - from));
        word.append(part, 1, part.size() - 2);
        if (place == Text::npos) return word += '"';
        word += "{" + to_utf8(task_holes.back()) + "}";
        from = place + installation.size();
    }
}

bool same_in_path(char32_t a, char32_t b)
{
    return a == b || (is_separator(a) && is_separator(b));
}

} // namespace

void Recorder::model_changed(const Control& control, Property property)
{
    if (!on_) return;
    const bool selects = property == Property::SelStart || property == Property::SelLength;
    const auto* box = property == Property::Contents ? dynamic_cast<const TextBox*>(&control) : nullptr;
    if (in_event_) {
        if (property == Property::Focus) asked_focus_ = &control;
        if (selects || property == Property::Contents) selected_.erase(&control);
        return;
    }
    if (box) edited_.insert(box);
    if (box || selects) selected_.insert(&control);
    const bool reopened =
        property == Property::Visible && control.visible() && dynamic_cast<const Window*>(&control) != nullptr;
    if (reopened) add("open", script_name(control));
}

void Recorder::pane_edited(const Control& pane, const Selection& replaced, TextView text)
{
    if (!on_ || in_event_) return;
    selected_.erase(&pane);
    add("replace", script_name(pane), std::to_string(replaced.start.number()) + " " + std::to_string(replaced.length),
        text.str());
}

void Recorder::menu_closed()
{
    const Form1& form1 = program_.form1;
    if (on_ && (form1.menuonquery || form1.menuonnumber)) menu_left_ = true;
}

void Recorder::stop_wished()
{
    if (!on_) return;
    write_edits();
    add("stop");
}

void Recorder::add_answer(std::string action, std::string words)
{
    if (on_ && in_event_) answers_.push_back({std::move(action), {}, std::move(words), {}, {}});
}

void Recorder::message_answered(const Message& message, Answer answer)
{
    if (!on_) return;
    add_answer("message", quoted_anywhere(message.text, program_.platform.files.installation_folder()));
    if (message.buttons != Buttons::OK) add_answer("reply", word_of(answer_words, answer));
}

void Recorder::input_given(TextView text)
{
    add_answer("input", text.empty() ? "cancel" : quoted_word(text));
}

void Recorder::file_chosen(const std::optional<Text>& path)
{
    add_answer("file", path ? file_word(*path) : "cancel");
}

std::string Recorder::file_word(TextView path) const
{
    const Text folder = program_.platform.files.installation_folder() + U"/";
    const bool inside =
        path.size() > folder.size() && std::ranges::equal(path.substr(0, folder.size()).str(), folder, same_in_path);
    return quoted_word(inside ? path.substr(folder.size()) : path);
}

void Recorder::clipboard_set(const TextSource& source)
{
    if (!on_) return;
    clipboard_.reset();
    if (in_event_) clipboard_ = source;
}

void Recorder::clipboard_read(TextView text)
{
    if (!on_ || !in_event_ || (clipboard_ && text_from(*clipboard_) == text)) return;
    add_answer("clipboard", quoted_word(text));
    clipboard_ = [own = text.str()](const auto& take) { take(own); };
}

} // namespace tarvik

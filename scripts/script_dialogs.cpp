#include "scripts/script_dialogs.h"

#include "scripts/vocabulary.h"

#include <algorithm>
#include <initializer_list>

namespace tarvik {

namespace {

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

const ButtonsRow& row_of(Buttons buttons)
{
    return *std::ranges::find(button_rows, buttons, &ButtonsRow::buttons);
}

} // namespace

Answer ScriptDialogs::message(const Message& message)
{
    before_dialog_();
    const ButtonsRow& row = row_of(message.buttons);
    Answer reply = Answer::OK;
    std::string complaint;
    if (message.buttons != Buttons::OK) {
        reply = Answer::None;
        complaint = "no reply was left for a message box";
        if (!answers_.replies.empty()) {
            reply = answers_.replies.front();
            answers_.replies.pop_front();
            if (std::ranges::find(row.offered, reply) == row.offered.end()) {
                complaint = "a message box does not offer the reply " + word_of(answer_words, reply);
                reply = Answer::None;
            }
        }
    }
    transcript_.line("message " + json_string(message.title) + " " + json_string(message.text) + " " +
                     std::string(row.word) + " " + word_of(icon_words, message.icon) + " -> " +
                     word_of(answer_words, reply));
    if (answers_.task_files) compare(message);
    if (reply == Answer::None) throw ScriptFailure(complaint);
    return reply;
}

// The answer was meant for another question, and what follows for another course of things.
void ScriptDialogs::compare(const Message& message)
{
    if (answers_.messages.empty()) throw ScriptFailure("录制时没有这条提示：" + json_string(message.text));
    const Text expected = std::move(answers_.messages.front());
    answers_.messages.pop_front();
    if (message.text != expected)
        throw ScriptFailure("提示是" + json_string(message.text) + "，录制时是" + json_string(expected));
}

std::optional<Text> ScriptDialogs::open_file(TextView filter)
{
    std::optional<Text> chosen = choose_file("open", filter);
    if (chosen && answers_.task_files && !answers_.task_files->file_exists(*chosen))
        throw ScriptFailure("没有这个文件：" + to_utf8(*chosen));
    return chosen;
}

Text ScriptDialogs::input(TextView title, TextView prompt, TextView preset)
{
    const std::string line = "inputbox " + json_string(title) + " " + json_string(prompt) + " " + json_string(preset);
    return answer_box(answers_.inputs, "an input box", line).value_or(Text{});
}

std::optional<Text> ScriptDialogs::choose_file(std::string_view kind, TextView filter)
{
    return answer_box(answers_.files, "a file dialog", "filedialog " + std::string(kind) + " " + json_string(filter));
}

std::optional<Text> ScriptDialogs::answer_box(std::deque<std::optional<Text>>& queue, std::string_view box,
                                              std::string_view line)
{
    before_dialog_();
    const std::string beginning = std::string(line) + " -> ";
    if (queue.empty()) {
        transcript_.line(beginning + "none");
        throw ScriptFailure("no answer was left for " + std::string(box));
    }
    std::optional<Text> answer = std::move(queue.front());
    queue.pop_front();
    transcript_.line(beginning + (answer ? json_string(*answer) : "cancel"));
    return answer;
}

} // namespace tarvik

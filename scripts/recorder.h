#pragma once

#include "events/events.h"
#include "scripts/script.h"

#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvik {

/// Writes down what a user does as a script. It stands between a front and the event table: each event goes through
/// send(), and what dialogs answer and the clipboard holds comes by OverheardDialogs and OverheardClipboard.
///
/// Work is recorded, not looks: sizes and places of windows and panes and the way of the focus leave no line unless
/// what follows depends on them.
class Recorder {
public:
    explicit Recorder(Program& program) : program_(program) {}

    /// The program has started. Boxes that hold something else when a recording begins are part of it, as are the
    /// document that is open and the option that is selected.
    void remember_opening();
    void start();
    /// The boxes hold again what they held.
    void restore_opening();
    bool on() const { return on_; }
    /// Ends the recording and gives its lines. A run that is in progress is played to its end.
    std::vector<std::string> finish();

    /// Sends the event to its handler.
    void send(Event& event);

    // To be called when it happens, recording or not:

    void model_changed(const Control& control, Property property);
    void pane_edited(const Control& pane, const Selection& replaced, TextView text);
    /// The context menu has gone, with an entry picked or not.
    void menu_closed();
    void stop_wished();
    void message_answered(const Message& message, Answer answer);
    void input_given(TextView text);
    void file_chosen(const std::optional<Text>& path);
    void clipboard_set(const TextSource& source);
    void clipboard_read(TextView text);

private:
    /// A line of a script as it is written down: the action, its control, further words as they stand, and a text.
    struct Step {
        std::string action, control, words;
        std::optional<Text> text;
        std::optional<Text> before; ///< what a box held that is set
    };
    /// What is written of an event depends on how things stood ahead of it.
    struct Before {
        int run;
        bool pastes; ///< a release of the mouse that the context menu waits for
        Selection selection;
    };
    Before look(const Event& event) const;
    std::vector<TextBox*> boxes() const;

    void write_opening();
    void write_what_is_used(const Event& event);
    void write_event(const Event& event, const Before& before);
    void write_key(const Event& event);
    void write_mouse(const Event& event, const Before& before);
    void write_edits();
    void write_set(const TextBox& box);
    void write_selection(const Control& control);
    void write_menu_end();
    void write_ticks();
    void write_run_end();
    /// An action on a control that takes the focus by it.
    void act(std::string_view action, const Control& control, std::string words = {}, std::optional<Text> text = {});
    /// What was asked meanwhile stands ahead of the line.
    void add(std::string action, std::string control = {}, std::string words = {}, std::optional<Text> text = {},
             std::optional<Text> before = {});
    /// An answer or announcement that belongs to the line that follows.
    void add_answer(std::string action, std::string words);
    bool joined_to_last(Step& step);
    std::string file_word(TextView path) const;

    Program& program_;
    std::vector<Step> steps_, answers_; ///< the shortest that do the same
    bool on_ = false, in_event_ = false;
    std::map<const TextBox*, Text> opening_;
    std::set<const TextBox*> edited_; ///< by the user since the last event
    Text query_;                      ///< what the query box held then
    /// What a box holds where the script is played: a key reaches it at its end, wherever the user's caret stood.
    std::map<const TextBox*, Text> reached_;
    std::set<const Control*> selected_;       ///< by the user, unknown to the script
    const Control* focus_ = nullptr;          ///< the control that has it
    const Control* written_focus_ = nullptr;  ///< the same where the script is played
    const Control* asked_focus_ = nullptr;    ///< by the handler at work
    const Control* designer_focus_ = nullptr; ///< of the designer's boxes the last that had it
    const Control* written_designer_ = nullptr;
    bool menu_left_ = false;
    std::optional<TextSource> clipboard_; ///< what the script's clipboard holds, where that is known
    const Timer* ticking_ = nullptr;
    int ticks_ = 0;
};

/// The boxes of a front, whose answers the recorder hears. While a script is played it answers them.
class OverheardDialogs final : public Dialogs {
public:
    /// `dialogs` gives those that are asked at the moment.
    OverheardDialogs(std::function<Dialogs&()> dialogs, Recorder& recorder)
        : dialogs_(std::move(dialogs)), recorder_(recorder)
    {
    }

    Answer message(const Message& message) override
    {
        const Answer answer = dialogs_().message(message);
        recorder_.message_answered(message, answer);
        return answer;
    }
    Text input(TextView title, TextView prompt, TextView preset) override
    {
        Text text = dialogs_().input(title, prompt, preset);
        recorder_.input_given(text);
        return text;
    }
    std::optional<Text> open_file(TextView filter) override { return heard(dialogs_().open_file(filter)); }
    std::optional<Text> save_file(TextView filter) override { return heard(dialogs_().save_file(filter)); }

private:
    std::optional<Text> heard(std::optional<Text> path) const
    {
        recorder_.file_chosen(path);
        return path;
    }

    std::function<Dialogs&()> dialogs_;
    Recorder& recorder_;
};

/// A front's clipboard, of which the recorder hears what the program puts there and takes.
class OverheardClipboard final : public Clipboard {
public:
    OverheardClipboard(Clipboard& clipboard, Recorder& recorder) : clipboard_(clipboard), recorder_(recorder) {}

    void clear() override
    {
        recorder_.clipboard_set([](const auto&) {});
        clipboard_.clear();
    }
    Text text() const override
    {
        Text text = clipboard_.text();
        recorder_.clipboard_read(text);
        return text;
    }
    void set_text(TextView text) override
    {
        recorder_.clipboard_set([own = text.str()](const auto& take) { take(own); });
        clipboard_.set_text(text);
    }
    void set_source(const TextSource& source) override
    {
        recorder_.clipboard_set(source);
        clipboard_.set_source(source);
    }

private:
    Clipboard& clipboard_;
    Recorder& recorder_;
};

} // namespace tarvik

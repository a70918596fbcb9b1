#pragma once

#include "desktop/look/theme.h"
#include "mainwindow/control.h"
#include "scripts/recorder.h"
#include "scripts/script.h"

#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QWidget>

#include <algorithm>
#include <deque>
#include <exception>
#include <functional>
#include <iostream>
#include <new>
#include <unordered_map>
#include <utility>
#include <vector>

/// Between the toolkit and the model: what happens waits for its turn, and what has changed is shown.
namespace tarvik {

/// Lets one thing happen after the other: while a handler runs, with a dialog that it has opened or not, whatever else
/// happens waits.
class EventQueue {
public:
    /// `show` brings the windows up to date; it is called after each event.
    EventQueue(Program& program, Recorder& recorder, std::function<void()> show)
        : program_(program), recorder_(recorder), show_(std::move(show))
    {
    }

    /// Runs the action now, or when everything ahead of it is done. What it throws is reported to the user.
    void submit(std::function<void()> action)
    {
        if (closed_) return;
        waiting_.push_back(std::move(action));
        if (!busy_) drain();
    }
    /// Sends an event when its turn comes.
    void post(const Event& event)
    {
        submit([this, own = event]() mutable { send(own); });
    }
    /// Sends an event at once; only from inside an action.
    void send(Event& event)
    {
        if (program_.ended) return;
        const BusyCursor cursor; // a short handler changes it back before anybody sees it
        recorder_.send(event);
    }
    Recorder& recorder() { return recorder_; }
    bool busy() const { return busy_; }
    /// What differs from a script ends the event that it is found in, and is not reported to the user.
    std::function<void(const ScriptFailure&)> script_failed = [](const ScriptFailure&) {};
    /// Nothing happens any more.
    void close() { closed_ = true; }

private:
    void drain()
    {
        busy_ = true;
        while (!waiting_.empty()) {
            const auto action = std::move(waiting_.front());
            waiting_.pop_front();
            attempt(action);
            attempt(show_);
        }
        busy_ = false;
    }
    // Nothing may leave through the toolkit's event loop, nor may a failure end the queue: not even one of telling it.
    void attempt(const std::function<void()>& work)
    {
        const auto tell_of = [this](TextView reason) {
            try {
                tell(program_, U" 请注意：\r\n操作没有完成：" + reason, application_title, Icon::Critical);
            } catch (const std::exception& untold) {
                std::cerr << "tarvik: " << untold.what() << '\n';
            }
        };
        try {
            work();
        } catch (const ScriptFailure& failure) {
            script_failed(failure);
        } catch (const std::bad_alloc&) {
            tell_of(U"内存不足。");
        } catch (const std::exception& error) {
            tell_of(from_utf8(error.what()));
        }
    }

    Program& program_;
    Recorder& recorder_;
    std::function<void()> show_;
    std::deque<std::function<void()>> waiting_;
    bool busy_ = false, closed_ = false;
};

/// Knows what shows each control of the model, and brings up to date only what shows a control that has changed.
class Mirror {
public:
    /// `widget` is what takes the focus for the control; none for a window or a timer. Controls that are shown last,
    /// such as windows, come after all others, whose contents must stand when they appear.
    void add(Control& control, QWidget* widget, std::function<void()> show, bool last = false)
    {
        Entry& entry = entries_[&control];
        entry = {&control, widget, std::move(show), last, true};
        changed_.push_back(&entry);
    }
    /// The control that a widget takes the focus for, if there is one.
    Control* control_of(const QWidget* widget) const
    {
        for (const auto& [control, entry] : entries_)
            if (widget && entry.widget == widget) return entry.control;
        return nullptr;
    }
    /// What a form does when the place or size of any of its controls has changed.
    void on_moved(FormId form, std::function<void()> place)
    {
        place_[form] = std::move(place);
        moved_.push_back(form);
    }

    /// To be called for every change in the model.
    void changed(const Control& control, Property property)
    {
        switch (property) {
        case Property::Focus: focus_ = &control; return;
        case Property::Left:
        case Property::Top:
        case Property::Width:
        case Property::Height:
            if (std::ranges::find(moved_, control.form()) == moved_.end()) moved_.push_back(control.form());
            break;
        default: break;
        }
        const auto found = entries_.find(&control);
        if (found == entries_.end() || found->second.changed) return;
        found->second.changed = true;
        changed_.push_back(&found->second);
    }
    /// Everything is to be shown anew, as after a change of the look.
    void all_changed()
    {
        for (auto& [control, entry] : entries_)
            if (!std::exchange(entry.changed, true)) changed_.push_back(&entry);
    }
    /// What fails to show keeps nothing else from showing; the first failure is thrown when all is done.
    void update()
    {
        show_changed(false);
        for (const FormId form : std::exchange(moved_, {}))
            if (const auto place = place_.find(form); place != place_.end()) attempt(place->second);
        show_changed(true);
        if (const Control* asked = std::exchange(focus_, nullptr)) {
            const auto found = entries_.find(asked);
            if (found != entries_.end() && found->second.widget) found->second.widget->setFocus(Qt::OtherFocusReason);
        }
        if (const auto failure = std::exchange(failure_, nullptr)) std::rethrow_exception(failure);
    }

private:
    struct Entry {
        Control* control;
        QWidget* widget;
        std::function<void()> show;
        bool last;
        bool changed;
    };
    // Showing something can make the toolkit tell of a change, so the list may grow meanwhile.
    void show_changed(bool last)
    {
        std::vector<Entry*> left;
        for (Entry* entry : std::exchange(changed_, {})) {
            if (entry->last != last) {
                left.push_back(entry);
                continue;
            }
            entry->changed = false;
            attempt(entry->show);
        }
        changed_.insert(changed_.end(), left.begin(), left.end());
    }
    void attempt(const std::function<void()>& show)
    {
        try {
            show();
        } catch (...) {
            if (!failure_) failure_ = std::current_exception();
        }
    }

    std::unordered_map<const Control*, Entry> entries_;
    std::unordered_map<FormId, std::function<void()>> place_;
    std::vector<Entry*> changed_;
    std::vector<FormId> moved_;
    const Control* focus_ = nullptr;
    std::exception_ptr failure_;
};

/// What the controls of a window work with, and the window's own scale.
struct Front {
    Program& program;
    EventQueue& queue;
    Mirror& mirror;
    const Theme& theme;
    Scale scale;
};

inline constexpr char32_t enter_key = U'\r';

/// The characters that a pressed key stands for: Enter is 13, Esc 27. None for keys that move, edit or command.
Text typed_characters(const QKeyEvent& event);

/// Presses keys in a control one after the other: each goes to its handler first, and one that is not eaten to `reach`,
/// which puts it into the control's text. A character that `is_text` goes there at once.
void press_keys(
    Front& front, Control& control, TextView keys, const std::function<void(char32_t)>& reach,
    const std::function<bool(char32_t)>& is_text = [](char32_t) { return false; });

/// Puts `kind`, a press or a release of the mouse in a control, into the queue. Nothing for buttons that the program
/// does not know.
void post_mouse(Front& front, Control& control, EventKind kind, const QMouseEvent& event);

/// Takes a call for the context menu. One that comes from the keyboard is a press of the right button; the mouse has
/// told of its press already.
void take_context_menu(Front& front, Control& control, QContextMenuEvent& event);

} // namespace tarvik

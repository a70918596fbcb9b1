#pragma once

#include "mainwindow/control.h"

#include <QWidget>

#include <algorithm>
#include <exception>
#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace tarvik {

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

} // namespace tarvik

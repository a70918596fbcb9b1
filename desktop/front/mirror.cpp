#include "desktop/front/mirror.h"

#include <QWidget>

#include <algorithm>
#include <utility>

namespace tarvik {

void Mirror::add(Control& control, QWidget* widget, std::function<void()> show, bool last)
{
    Entry& entry = entries_[&control];
    entry = {&control, widget, std::move(show), last, true};
    changed_.push_back(&entry);
}

Control* Mirror::control_of(const QWidget* widget) const
{
    for (const auto& [control, entry] : entries_)
        if (widget && entry.widget == widget) return entry.control;
    return nullptr;
}

void Mirror::on_moved(FormId form, std::function<void()> place)
{
    place_[form] = std::move(place);
    moved_.push_back(form);
}

void Mirror::changed(const Control& control, Property property)
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

void Mirror::all_changed()
{
    for (auto& [control, entry] : entries_)
        if (!std::exchange(entry.changed, true)) changed_.push_back(&entry);
}

// Showing something can make the toolkit tell of a change, so the list may grow meanwhile.
void Mirror::show_changed(bool last)
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

void Mirror::attempt(const std::function<void()>& show)
{
    try {
        show();
    } catch (...) {
        if (!failure_) failure_ = std::current_exception();
    }
}

void Mirror::update()
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

} // namespace tarvik

#pragma once

#include "mainwindow/control.h"

#include <exception>
#include <functional>
#include <unordered_map>
#include <vector>

class QWidget;

namespace tarvik {

/// Knows what shows each control of the model, and brings up to date only what shows a control that has changed.
class Mirror {
public:
    /// `widget` is what takes the focus for the control; none for a window or a timer. Controls that are shown last,
    /// such as windows, come after all others, whose contents must stand when they appear.
    void add(Control& control, QWidget* widget, std::function<void()> show, bool last = false);
    /// The control that a widget takes the focus for, if there is one.
    Control* control_of(const QWidget* widget) const;
    /// What a form does when the place or size of any of its controls has changed.
    void on_moved(FormId form, std::function<void()> place);

    /// To be called for every change in the model.
    void changed(const Control& control, Property property);
    /// Everything is to be shown anew, as after a change of the look.
    void all_changed();
    /// What fails to show keeps nothing else from showing; the first failure is thrown when all is done.
    void update();

private:
    struct Entry {
        Control* control;
        QWidget* widget;
        std::function<void()> show;
        bool last;
        bool changed;
    };
    void show_changed(bool last);
    void attempt(const std::function<void()>& show);

    std::unordered_map<const Control*, Entry> entries_;
    std::unordered_map<FormId, std::function<void()>> place_;
    std::vector<Entry*> changed_;
    std::vector<FormId> moved_;
    const Control* focus_ = nullptr;
    std::exception_ptr failure_;
};

} // namespace tarvik

#pragma once

#include "desktop/front/event_queue.h"

#include <QObject>

#include <unordered_map>

class QWidget;

namespace tarvik {

/// Tells which control of the model has the focus. A dialog, a menu or another program in front takes it from none.
class FocusTracker {
public:
    explicit FocusTracker(EventQueue& queue);

    void add(const QWidget& widget, Control& control) { controls_[&widget] = &control; }

private:
    void moved_to(const QWidget* widget);

    EventQueue& queue_;
    std::unordered_map<const QWidget*, Control*> controls_;
    Control* focus_ = nullptr;
    QObject connection_; // ends with the tracker
};

} // namespace tarvik

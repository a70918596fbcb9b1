#pragma once

#include "desktop/front/event_queue.h"
#include "desktop/front/front.h"

#include <QMenu>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace tarvik {

/// Tells which control of the model has the focus. A dialog, a menu or another program in front takes it from none.
class FocusTracker {
public:
    explicit FocusTracker(Front& front);

private:
    Control* focus_ = nullptr;
    QObject connection_; // ends with the tracker
};

/// Lets the model's timers run. A tick that falls due while a handler runs waits, and does not pile up.
class ModelTimers {
public:
    explicit ModelTimers(Front& front);

private:
    struct Running {
        explicit Running(Timer& timer_) : timer(timer_) {}
        Timer& timer;
        QTimer clock;
        bool waiting = false;
    };
    void add(Timer& timer);
    void fell_due(Running& running);

    Front& front_;
    std::vector<std::unique_ptr<Running>> timers_;
};

/// The context menu of the panes, the query box and the number box. It opens when the handler that asked for it has
/// ended, and its entry is an event of its own.
class ContextMenu {
public:
    ContextMenu(EventQueue& queue, Form1& form1);

    void ask() { asked_ = true; }
    /// Opens the menu if it was asked for.
    void open_if_asked();

private:
    void add(const QString& caption, MenuEntry entry);
    EventQueue& queue_;
    Form1& form1_;
    QMenu menu_;
    bool asked_ = false;
};

} // namespace tarvik

#pragma once

#include "desktop/front/event_queue.h"
#include "desktop/front/front.h"

#include <QApplication>
#include <QMenu>
#include <QObject>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <utility>
#include <vector>

namespace tarvik {

/// Tells which control of the model has the focus. A dialog, a menu or another program in front takes it from none.
class FocusTracker {
public:
    explicit FocusTracker(Front& front)
    {
        QObject::connect(qApp, &QApplication::focusChanged, &connection_,
                         [this, &front](QWidget*, const QWidget* widget) {
                             Control* const now = front.mirror.control_of(widget);
                             if (!now || now == focus_) return;
                             if (Control* const old = std::exchange(focus_, now))
                                 front.queue.post({EventKind::LostFocus, *old});
                             front.queue.post({EventKind::GotFocus, *now});
                         });
    }

private:
    Control* focus_ = nullptr;
    QObject connection_; // ends with the tracker
};

/// Lets the model's timers run. A tick that falls due while a handler runs waits, and does not pile up.
class ModelTimers {
public:
    explicit ModelTimers(Front& front) : front_(front)
    {
        for (auto& [index, timer] : front.program.form1.Timer1) add(timer);
        for (Timer* timer : front.program.form1.batch_timers()) add(*timer);
    }

private:
    struct Running {
        explicit Running(Timer& timer_) : timer(timer_) {}
        Timer& timer;
        QTimer clock;
        bool waiting = false;
    };
    void add(Timer& timer)
    {
        timers_.push_back(std::make_unique<Running>(timer));
        Running& running = *timers_.back();
        QObject::connect(&running.clock, &QTimer::timeout, &running.clock, [this, &running] { fell_due(running); });
        front_.mirror.add(timer, nullptr, [&running] {
            if (running.clock.interval() != running.timer.interval())
                running.clock.setInterval(running.timer.interval());
            if (running.timer.enabled() == running.clock.isActive()) return;
            if (running.timer.enabled()) running.clock.start();
            else running.clock.stop();
        });
    }
    void fell_due(Running& running)
    {
        if (std::exchange(running.waiting, true)) return;
        front_.queue.submit([this, &running] {
            running.waiting = false;
            if (!running.timer.enabled()) return;
            Event tick{EventKind::Tick, running.timer};
            front_.queue.send(tick);
        });
    }

    Front& front_;
    std::vector<std::unique_ptr<Running>> timers_;
};

/// The context menu of the panes, the query box and the number box. It opens when the handler that asked for it has
/// ended, and its entry is an event of its own.
class ContextMenu {
public:
    // The menu takes the release of the button that opened it: the box must not wait for that release any longer, or
    // the next selection made in it would be replaced by the clipboard.
    ContextMenu(EventQueue& queue, Form1& form1) : queue_(queue), form1_(form1)
    {
        QObject::connect(&menu_, &QMenu::aboutToHide, &menu_, [this] {
            queue_.submit([this] {
                queue_.recorder().menu_closed();
                form1_.menuonquery = form1_.menuonnumber = false;
            });
        });
        add("_复制", MenuEntry::copy1);
        menu_.addSeparator()->setText("空格栏");
        add("_粘贴", MenuEntry::paste1);
    }

    void ask() { asked_ = true; }
    /// Opens the menu if it was asked for.
    // At the pointer, or at the box when the keyboard asked.
    void open_if_asked()
    {
        if (!std::exchange(asked_, false)) return;
        QPoint place = QCursor::pos();
        if (const QWidget* box = QApplication::focusWidget()) {
            const QRect area(box->mapToGlobal(QPoint(0, 0)), box->size());
            if (!area.contains(place)) place = area.center();
        }
        menu_.popup(place);
    }

private:
    void add(const QString& caption, MenuEntry entry)
    {
        QObject::connect(menu_.addAction(caption), &QAction::triggered, &menu_, [this, entry] {
            Event picked{EventKind::Menu, form1_.window};
            picked.entry = entry;
            queue_.post(picked);
        });
    }
    EventQueue& queue_;
    Form1& form1_;
    QMenu menu_;
    bool asked_ = false;
};

} // namespace tarvik

#pragma once

#include "desktop/front/front.h"

#include <QApplication>
#include <QMenu>
#include <QObject>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <utility>

namespace tarvik {

/// Posts which control of the model has the focus, as long as `owner` lives. A dialog, a menu or another program in
/// front takes it from none.
inline void track_focus(Front& front, QObject& owner)
{
    const auto changed = [&front, focus = static_cast<Control*>(nullptr)](QWidget*, const QWidget* widget) mutable {
        Control* const now = front.mirror.control_of(widget);
        if (!now || now == focus) return;
        if (Control* const old = std::exchange(focus, now)) front.queue.post({EventKind::LostFocus, *old});
        front.queue.post({EventKind::GotFocus, *now});
    };
    QObject::connect(qApp, &QApplication::focusChanged, &owner, changed);
}

/// Lets a timer of the model run, as long as `owner` lives. A tick that falls due while a handler runs waits, and does
/// not pile up.
inline void run_timer(Front& front, Timer& timer, QObject& owner)
{
    auto* const clock = new QTimer(&owner);
    QObject::connect(clock, &QTimer::timeout, clock, [&front, &timer, waiting = std::make_shared<bool>(false)] {
        if (std::exchange(*waiting, true)) return;
        front.queue.submit([&front, &timer, waiting] {
            *waiting = false;
            if (!timer.enabled()) return;
            Event tick{EventKind::Tick, timer};
            front.queue.send(tick);
        });
    });
    front.mirror.add(timer, nullptr, [clock, &timer] {
        if (clock->interval() != timer.interval()) clock->setInterval(timer.interval());
        if (timer.enabled() == clock->isActive()) return;
        if (timer.enabled()) clock->start();
        else clock->stop();
    });
}

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

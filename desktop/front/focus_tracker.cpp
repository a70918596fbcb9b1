#include "desktop/front/focus_tracker.h"

#include <QApplication>
#include <QWidget>

#include <utility>

namespace tarvik {

FocusTracker::FocusTracker(EventQueue& queue) : queue_(queue)
{
    QObject::connect(qApp, &QApplication::focusChanged, &connection_,
                     [this](const QWidget*, const QWidget* now) { moved_to(now); });
}

void FocusTracker::moved_to(const QWidget* widget)
{
    const auto found = controls_.find(widget);
    if (found == controls_.end() || found->second == focus_) return;
    if (Control* const old = std::exchange(focus_, found->second)) queue_.post({EventKind::LostFocus, *old});
    queue_.post({EventKind::GotFocus, *focus_});
}

} // namespace tarvik

#pragma once

#include "desktop/front/event_queue.h"

#include <QMenu>

namespace tarvik {

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

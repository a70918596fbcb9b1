#include "desktop/front/context_menu.h"

#include <QApplication>

#include <utility>

namespace tarvik {

// The menu takes the release of the button that opened it: the box must not wait for that release any longer, or the
// next selection made in it would be replaced by the clipboard.
ContextMenu::ContextMenu(EventQueue& queue, Form1& form1) : queue_(queue), form1_(form1)
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

void ContextMenu::add(const QString& caption, MenuEntry entry)
{
    QObject::connect(menu_.addAction(caption), &QAction::triggered, &menu_, [this, entry] {
        Event picked{EventKind::Menu, form1_.window};
        picked.entry = entry;
        queue_.post(picked);
    });
}

// At the pointer, or at the box when the keyboard asked.
void ContextMenu::open_if_asked()
{
    if (!std::exchange(asked_, false)) return;
    QPoint place = QCursor::pos();
    if (const QWidget* box = QApplication::focusWidget()) {
        const QRect area(box->mapToGlobal(QPoint(0, 0)), box->size());
        if (!area.contains(place)) place = area.center();
    }
    menu_.popup(place);
}

} // namespace tarvik

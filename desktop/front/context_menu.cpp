#include "desktop/front/context_menu.h"

#include <QApplication>

#include <utility>

namespace tarvik {

ContextMenu::ContextMenu(EventQueue& queue, Window& main_window) : queue_(queue), main_window_(main_window)
{
    add("_复制", MenuEntry::copy1);
    menu_.addSeparator()->setText("空格栏");
    add("_粘贴", MenuEntry::paste1);
}

void ContextMenu::add(const QString& caption, MenuEntry entry)
{
    QObject::connect(menu_.addAction(caption), &QAction::triggered, &menu_, [this, entry] {
        Event picked{EventKind::Menu, main_window_};
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

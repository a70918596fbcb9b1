#include "desktop/windows/query_aid.h"

#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_widget.h"

#include <QKeyEvent>

namespace tarvik {

QueryAid::QueryAid(Front& front, LineBox& box, QWidget& window, std::function<TextWidget*()> shown_pane)
    : front_(front), box_(box), shown_pane_(std::move(shown_pane)), list_(*new CommandList(window))
{
    box_.installEventFilter(this);
    connect(&list_, &QListWidget::itemClicked, this, [this] { put(list_.current(), true); });
}

void QueryAid::show_commands()
{
    const QString text = box_.text();
    if (text == put_) return;
    put_.clear();
    if (box_.hasFocus()) list_.offer(text, box_.geometry());
    else list_.hide();
}

bool QueryAid::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusOut) list_.hide();
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter || key.key() == Qt::Key_Escape) list_.hide();
        if (key.modifiers() == Qt::NoModifier || key.modifiers() == Qt::KeypadModifier)
            if (pick(key) || scroll(key)) return true;
    }
    return QObject::eventFilter(watched, event);
}

bool QueryAid::pick(const QKeyEvent& event)
{
    if (list_.isHidden()) return false;
    switch (event.key()) {
    case Qt::Key_Tab: put(list_.current(), true); return true;
    case Qt::Key_Down: put(list_.step(1), false); return true;
    case Qt::Key_Up: put(list_.step(-1), false); return true;
    default: return false;
    }
}

void QueryAid::put(const QString& command, bool closes_list)
{
    if (closes_list) list_.hide();
    put_ = command;
    front_.queue.submit([this, command] {
        TextBox& box = front_.program.form1.query_box();
        box.set_text(from_qt(command));
        box.select({Position::at_offset(box.text().size()), 0});
    });
}

bool QueryAid::scroll(const QKeyEvent& event)
{
    TextWidget* const pane = shown_pane_();
    if (!pane) return false;
    const int page = std::max(1, pane->area().whole_rows() - 1);
    switch (event.key()) {
    case Qt::Key_Up: pane->scroll_rows(-1); return true;
    case Qt::Key_Down: pane->scroll_rows(1); return true;
    case Qt::Key_PageUp: pane->scroll_rows(-page); return true;
    case Qt::Key_PageDown: pane->scroll_rows(page); return true;
    default: return false;
    }
}

} // namespace tarvik

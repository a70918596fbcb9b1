#include "desktop/windows/find_bar.h"

#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_widget.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>

namespace tarvik {

FindBar::FindBar(std::function<TextWidget*()> shown_pane, std::function<void()> closed, QWidget& window)
    : QFrame(&window), shown_pane_(std::move(shown_pane)), closed_(std::move(closed))
{
    setObjectName("find");
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setPalette(QApplication::palette()); // lighter than the pane that it covers
    setBackgroundRole(QPalette::AlternateBase);
    setAttribute(Qt::WA_NoMousePropagation);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(4, 2, 4, 2);
    text_.setObjectName("findText");
    text_.setPlaceholderText("在窗格中查找，Enter 或 F3 下一处");
    text_.setAccessibleName("在窗格中查找");
    row->addWidget(&text_);
    row->addWidget(&result_);
    text_.installEventFilter(this);
    connect(&text_, &QLineEdit::textEdited, &result_, &QLabel::clear);
    hide();
}

void FindBar::open()
{
    TextWidget* const pane = shown_pane_();
    if (!pane) return;
    const QString selected = pane->selected_line();
    if (!selected.isEmpty()) text_.setText(selected);
    show();
    lay(*pane);
    raise();
    text_.setFocus(Qt::ShortcutFocusReason);
    text_.selectAll();
}

void FindBar::lay(const QWidget& pane)
{
    text_.setMinimumWidth(text_.fontMetrics().averageCharWidth() * 34);
    const QSize wanted = sizeHint();
    const QRect over = pane.geometry();
    setGeometry(std::max(over.left(), over.right() - wanted.width() - 30), over.top() + 2,
                std::min(wanted.width(), over.width()), wanted.height());
}

void FindBar::find(bool forward)
{
    TextWidget* const pane = shown_pane_();
    if (!pane) return;
    if (text_.text().isEmpty()) {
        open();
        return;
    }
    result_.setText(pane->find(from_qt(text_.text()), forward) ? QString() : "没有找到");
    if (isVisible()) lay(*pane);
}

bool FindBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress) return QFrame::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Escape:
        hide();
        closed_();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter: find(!key->modifiers().testFlag(Qt::ShiftModifier)); return true;
    default: return false;
    }
}

} // namespace tarvik

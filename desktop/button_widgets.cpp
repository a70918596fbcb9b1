#include "desktop/button_widgets.h"

#include "desktop/mouse.h"

#include <QKeyEvent>

namespace tarvik {

ButtonWidget::ButtonWidget(Front& front, Control& control, std::function<void()> clicked_by_mouse, QWidget* parent)
    : QPushButton(parent), front_(front), control_(control), clicked_by_mouse_(std::move(clicked_by_mouse))
{
    setAttribute(Qt::WA_NoMousePropagation);
    setMinimumSize(1, 1);
    connect(this, &QPushButton::clicked, this, [this] { front_.queue.post({EventKind::Click, control_}); });
}

void ButtonWidget::post_mouse(EventKind kind, Qt::MouseButton button)
{
    if (const auto known = mouse_button(button)) {
        Event event{kind, control_};
        event.button = *known;
        front_.queue.post(event);
    }
}

void ButtonWidget::mousePressEvent(QMouseEvent* event)
{
    QPushButton::mousePressEvent(event);
    post_mouse(EventKind::MouseDown, event->button());
}

void ButtonWidget::mouseReleaseEvent(QMouseEvent* event)
{
    post_mouse(EventKind::MouseUp, event->button());
    QPushButton::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && clicked_by_mouse_) front_.queue.submit(clicked_by_mouse_);
}

void ButtonWidget::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) click();
    else QPushButton::keyPressEvent(event);
}

OptionWidget::OptionWidget(Front& front, OptionButton& control, std::function<void()> clicked_by_mouse, QWidget* parent)
    : QRadioButton(parent), front_(front), clicked_by_mouse_(std::move(clicked_by_mouse))
{
    setAttribute(Qt::WA_NoMousePropagation);
    setMinimumSize(1, 1);
    setAutoExclusive(false);
    connect(this, &QRadioButton::clicked, this, [this, &control] {
        for (const EventKind kind : {EventKind::MouseDown, EventKind::MouseUp, EventKind::Click})
            front_.queue.post({kind, control});
    });
}

void OptionWidget::mouseReleaseEvent(QMouseEvent* event)
{
    QRadioButton::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton && clicked_by_mouse_) front_.queue.submit(clicked_by_mouse_);
}

} // namespace tarvik

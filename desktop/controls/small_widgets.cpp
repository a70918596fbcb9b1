#include "desktop/controls/small_widgets.h"

#include "desktop/front/input.h"
#include "desktop/look/control_style.h"
#include "desktop/text_view/text_accessible.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>

namespace tarvik {

namespace {

constexpr int caption_left = 10, caption_top = 3;
constexpr int most_steps = 12;
constexpr double step = 0.97;

} // namespace

ButtonWidget::ButtonWidget(Front& front, Control& control, std::function<void()> clicked_by_mouse, QWidget* parent)
    : QPushButton(parent), front_(front), control_(control), clicked_by_mouse_(std::move(clicked_by_mouse))
{
    setAttribute(Qt::WA_NoMousePropagation);
    setMinimumSize(1, 1);
    connect(this, &QPushButton::clicked, this, [this] { front_.queue.post({EventKind::Click, control_}); });
}

void ButtonWidget::mousePressEvent(QMouseEvent* event)
{
    QPushButton::mousePressEvent(event);
    post_mouse(front_, control_, EventKind::MouseDown, *event);
}

void ButtonWidget::mouseReleaseEvent(QMouseEvent* event)
{
    post_mouse(front_, control_, EventKind::MouseUp, *event);
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
    forget_accessible(*this);
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

FrameWidget::FrameWidget(QWidget* parent) : QWidget(parent)
{
    setProperty(accessible_role, QAccessible::Grouping);
    setAttribute(Qt::WA_NoMousePropagation);
}

void FrameWidget::set_caption(const QString& caption)
{
    caption_ = caption;
    setAccessibleName(caption);
    update();
}

void FrameWidget::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paint_box(painter, rect(), palette().color(QPalette::Window), false);
    painter.setPen(palette().color(QPalette::WindowText));
    const int room = width() - 2 * caption_left;
    QFont smaller = font(); // a little, at small zooms; widths do not go in proportion to the size
    for (int i = 0; i < most_steps && QFontMetrics(smaller).horizontalAdvance(caption_) + 1 > room; ++i)
        smaller.setPointSizeF(smaller.pointSizeF() * step);
    painter.setFont(smaller);
    painter.drawText(rect().adjusted(caption_left, caption_top, -caption_left, 0), Qt::AlignLeft | Qt::AlignTop,
                     caption_);
}

} // namespace tarvik

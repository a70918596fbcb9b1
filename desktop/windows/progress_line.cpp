#include "desktop/windows/progress_line.h"

#include "desktop/look/theme.h"

#include <QEvent>
#include <QPainter>

#include <algorithm>
#include <utility>

namespace tarvik {

namespace {

constexpr int thickness = 4;

} // namespace

ProgressLine::ProgressLine(QWidget& window) : QWidget(&window)
{
    setObjectName("progress");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    window.installEventFilter(this);
    hide();
}

void ProgressLine::show_work(double done)
{
    if (std::exchange(work_, done) != done) show_line();
}

void ProgressLine::show_batch(double done)
{
    if (std::exchange(batch_, done) != done) show_line();
}

void ProgressLine::show_line()
{
    setVisible(part() >= 0);
    if (part() < 0) return;
    lay();
    raise();
    update();
}

bool ProgressLine::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize) lay();
    return QWidget::eventFilter(watched, event);
}

void ProgressLine::lay()
{
    setGeometry(0, 0, parentWidget()->width(), thickness);
}

void ProgressLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Midlight));
    painter.fillRect(0, 0, qRound(width() * std::clamp(part(), 0.0, 1.0)), height(), palette().color(focus_role));
}

} // namespace tarvik

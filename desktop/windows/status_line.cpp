#include "desktop/windows/status_line.h"

#include <QDesktopServices>
#include <QMouseEvent>
#include <QPainter>
#include <QUrl>

#include <utility>

namespace tarvik {

namespace {

constexpr int notice_milliseconds = 8000;
constexpr int edge = 8;
const QColor ground(215, 198, 149, 150);

} // namespace

StatusLine::StatusLine(std::function<void()> stop, QWidget& window) : QWidget(&window), stop_("做完手上这张就停", this)
{
    setObjectName("status");
    setAttribute(Qt::WA_NoMousePropagation);
    stop_.setObjectName("stop");
    stop_.setFocusPolicy(Qt::NoFocus);
    stop_.setMinimumSize(1, 1);
    stop_.setToolTip("手上的一张单做完后停止运行，已存的文件都保留");
    stop_.hide();
    connect(&stop_, &QPushButton::clicked, this, [this, stop = std::move(stop)] {
        stop_.setEnabled(false);
        stop();
    });
    notice_time_.setSingleShot(true);
    notice_time_.setInterval(notice_milliseconds);
    connect(&notice_time_, &QTimer::timeout, this, [this] { show_notice({}); });
}

QString StatusLine::text() const
{
    for (const QString* text : {&run_, &notice_, &end_.text})
        if (!text->isEmpty()) return *text;
    return state_;
}

void StatusLine::show_state(const QString& text)
{
    if (std::exchange(state_, text) == text) return;
    if (!end_.text.isEmpty() && text != state_at_end_) end_ = {};
    changed();
}

void StatusLine::show_notice(const QString& text)
{
    notice_ = text.simplified();
    if (!notice_.isEmpty()) notice_time_.start();
    changed();
}

void StatusLine::show_run(const QString& text)
{
    if (std::exchange(run_, text) == text) return;
    if (stop_.isHidden()) stop_.setEnabled(true);
    stop_.setVisible(!run_.isEmpty());
    if (!run_.isEmpty()) notice_.clear();
    changed();
}

void StatusLine::show_end(RunEnd end)
{
    end_ = std::move(end);
    state_at_end_ = state_;
    changed();
}

void StatusLine::changed()
{
    const bool ended = text() == end_.text && !end_.text.isEmpty();
    setToolTip((QStringList(text()) + (ended ? end_.details.mid(0, 40) : QStringList())).join('\n'));
    setCursor(ended && !end_.folder.isEmpty() ? Qt::PointingHandCursor : Qt::ArrowCursor);
    setAccessibleName(text());
    update();
}

void StatusLine::resizeEvent(QResizeEvent*)
{
    const int width = fontMetrics().horizontalAdvance(stop_.text()) + 3 * edge;
    stop_.setGeometry(this->width() - width - edge, 1, width, height() - 2);
}

void StatusLine::mouseReleaseEvent(QMouseEvent* event)
{
    const bool on_end = event->button() == Qt::LeftButton && text() == end_.text && !end_.folder.isEmpty();
    if (on_end) QDesktopServices::openUrl(QUrl::fromLocalFile(end_.folder));
}

void StatusLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), ground);
    painter.setPen(palette().color(QPalette::WindowText));
    const int right = stop_.isHidden() ? width() - edge : stop_.x() - edge;
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, right - edge);
    painter.drawText(QRect(edge, 0, right - edge, height()), Qt::AlignLeft | Qt::AlignVCenter, shown);
}

} // namespace tarvik

#include "desktop/windows/status_line.h"

#include "desktop/services/system.h"
#include "desktop/text_view/text_accessible.h"

#include <QAccessible>
#include <QDir>
#include <QListWidget>
#include <QMouseEvent>
#include <QPainter>
#include <QShortcut>

#include <utility>

namespace tarvik {

namespace {

constexpr int notice_milliseconds = 8000;
constexpr int edge = 8;

} // namespace

StatusLine::StatusLine(std::function<void()> stop, QWidget& window)
    : QWidget(&window), stop_("做完手上这张就停", this), menu_("菜单 F10", this)
{
    setObjectName("status");
    setProperty(accessible_role, QAccessible::StatusBar);
    setAttribute(Qt::WA_NoMousePropagation);
    stop_.setObjectName("stop");
    stop_.setFocusPolicy(Qt::NoFocus);
    stop_.setMinimumSize(1, 1);
    stop_.setToolTip("手上的一张单做完后停止运行，已存的文件都保留");
    stop_.hide();
    menu_.setObjectName("menu");
    menu_.setFocusPolicy(Qt::NoFocus);
    menu_.setMinimumSize(1, 1);
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
    const QString mark = mark_.isEmpty() ? QString() : mark_ + "  ·  ";
    for (const QString* text : {&run_, &notice_, &end_.text})
        if (!text->isEmpty()) return mark + *text;
    return mark + state_;
}

void StatusLine::show_mark(const QString& mark)
{
    if (std::exchange(mark_, mark) != mark) changed();
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
    end_ = last_end_ = std::move(end);
    state_at_end_ = state_;
    changed();
}

void StatusLine::open_end()
{
    if (last_end_.folder.isEmpty()) return show_notice("还没有存过文件");
    show_by_system(last_end_.folder);
}

void StatusLine::show_by_system(const QString& path)
{
    open_by_system(path, [this, path] { show_notice("系统没有打开：" + QDir::toNativeSeparators(path)); });
}

void StatusLine::list_end()
{
    if (last_end_.details.isEmpty()) return show_notice("还没有运行过，或没有可列的文件和关键字");
    auto* const list = new QListWidget(window());
    list->setWindowFlags(Qt::Dialog);
    list->setObjectName("runList");
    list->setAttribute(Qt::WA_DeleteOnClose);
    list->setWindowTitle(last_end_.text);
    list->setAccessibleName("运行的清单");
    list->addItems(last_end_.details);
    list->setCurrentRow(0);
    list->resize(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 24);
    connect(new QShortcut(Qt::Key_Escape, list), &QShortcut::activated, list, &QWidget::close);
    list->show();
    list->activateWindow();
}

bool StatusLine::shows_end() const
{
    return !end_.text.isEmpty() && text().endsWith(end_.text);
}

void StatusLine::changed()
{
    const bool ended = shows_end();
    setToolTip((QStringList(text()) + (ended ? end_.details.mid(0, 40) : QStringList())).join('\n'));
    setCursor(ended && !end_.folder.isEmpty() ? Qt::PointingHandCursor : Qt::ArrowCursor);
    setAccessibleName(text());
    update();
}

void StatusLine::resizeEvent(QResizeEvent*)
{
    int right = width() - edge;
    for (QPushButton* button : {&menu_, &stop_}) {
        const int room = fontMetrics().horizontalAdvance(button->text()) + 3 * edge;
        button->setGeometry(right - room, 1, room, height() - 2);
        right -= room + edge;
    }
}

void StatusLine::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) return;
    if (shows_end() && !end_.folder.isEmpty()) open_end();
    else if (text().endsWith(state_)) result_clicked();
}

void StatusLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::AlternateBase));
    painter.setPen(palette().color(QPalette::WindowText));
    const int right = (stop_.isHidden() ? menu_ : stop_).x() - edge;
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideRight, right - edge);
    painter.drawText(QRect(edge, 0, right - edge, height()), Qt::AlignLeft | Qt::AlignVCenter, shown);
}

} // namespace tarvik

#include "desktop/windows/form_window.h"

#include "desktop/controls/control_maker.h"
#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_accessible.h"
#include "platform/failure.h"
#include "platform/files/path_text.h"

#include <QAccessible>
#include <QCloseEvent>
#include <QImageReader>
#include <QPainter>

namespace tarvik {

namespace {

/// Empty when there is no picture.
QString picture_path(const Files& files)
{
    try {
        const std::u32string_view name = U"123.jpg";
        return files.file_exists(name) ? QString::fromStdString(utf8_of(files.resolve(name))) : QString();
    } catch (const Failure&) {
        return {};
    }
}

} // namespace

FormWindow::FormWindow(Front& front, Window& model)
    : front_(front), model_(model), controls_(front, [this](const Control& control) { return fitted(control); })
{
    open_to_screen_readers();
    setObjectName(widget_name(model));
    setProperty(accessible_role, QAccessible::Window);
    front.mirror.add(
        model, nullptr, [this] { show_model(); }, true);
    front.mirror.on_moved(model.form(), [this] { place(); });
}

void FormWindow::show_model()
{
    const QString caption = to_qt(model_.caption()) + title_addition();
    if (windowTitle() != caption) setWindowTitle(caption);
    front_.theme.colour(*this, model_.back_color());
    show_size();
    if (std::exchange(front_requests_, model_.front_requests()) != model_.front_requests() && model_.visible()) {
        model_.set_window_state(0);
        raise();
    }
    const bool minimised = model_.window_state() == 1;
    if (model_.visible() && isHidden() && !minimised) {
        if (!std::exchange(shown_before_, true)) before_first_show();
        appear();
    }
    if (!model_.visible() && !isHidden()) hide();
    if (model_.visible() && minimised != (isMinimized() || isHidden())) set_aside(minimised);
}

void FormWindow::set_aside(bool aside)
{
    if (aside) showMinimized();
    else showNormal();
}

void FormWindow::show_size()
{
    const QSize wanted = front_.scale.size(model_);
    if (wanted == size_) return;
    size_ = wanted;
    resize(wanted);
}

void FormWindow::take_size(QSize size)
{
    model_.set_width(front_.scale.twips(size.width()));
    model_.set_height(front_.scale.twips(size.height()));
}

void FormWindow::resizeEvent(QResizeEvent* event)
{
    if (!isMinimized()) post_resize(event->size());
}

void FormWindow::post_resize(QSize size)
{
    front_.queue.submit([this, size] {
        if (size != size_) {
            size_ = size;
            take_size(size);
        }
        Event resized{EventKind::Resize, model_};
        front_.queue.send(resized);
    });
}

void FormWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::WindowStateChange || !isVisible()) return;
    front_.queue.submit([this, state = isMinimized() ? 1 : 0] {
        if (model_.window_state() == state) return;
        model_.set_window_state(state);
        Event resized{EventKind::Resize, model_};
        if (state == 0) front_.queue.send(resized);
    });
}

void FormWindow::closeEvent(QCloseEvent* event)
{
    event->ignore(); // the model decides
    front_.queue.submit([this] {
        if (!may_close()) return;
        Event closing{EventKind::Close, model_};
        front_.queue.send(closing);
        if (!closing.cancelled) model_.set_visible(false);
    });
}

// Only the stretched picture is kept: the file is looked for and loaded again for every size of the window.
void FormWindow::paint_picture(QPainter& painter)
{
    const QSize pixels = (QSizeF(picture_size()) * devicePixelRatioF()).toSize();
    if (picture_pixels_ != pixels) {
        picture_pixels_ = pixels;
        picture_ = {};
        if (const QString path = picture_path(front_.program.platform.files); !path.isEmpty()) {
            QImageReader reader(path);
            reader.setScaledSize(pixels);
            picture_ = QPixmap::fromImage(reader.read());
        }
    }
    if (!picture_.isNull()) painter.drawPixmap(QRect(QPoint(0, 0), picture_size()), picture_);
}

void FormWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    if (has_picture() && front_.theme.look() == Look::Light) paint_picture(painter);
}

} // namespace tarvik

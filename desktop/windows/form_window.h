#pragma once

#include "desktop/front/front.h"
#include "desktop/look/pane_fonts.h"
#include "desktop/look/qt_text.h"
#include "desktop/text_view/text_accessible.h"
#include "desktop/text_view/text_widget.h"
#include "desktop/windows/line_box.h"

#include <QAccessible>
#include <QCloseEvent>
#include <QImageReader>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

#include <functional>
#include <vector>

class QAbstractButton;
class QLabel;

namespace tarvik {

/// A control's name with its window and index, as widgets are called: "Form1.Text1(1)"; a window by its own alone.
QString widget_name(const Control& control);

/// A window that stands beside the main window; sizes are in pixels at zoom 1.
struct SideWindow {
    QSizeF full_size;
    QSizeF least_size;    ///< that still shows everything
    double over_main = 1; ///< as large a part of its size it shows with where it lies over the main window
    int bar = 0;          ///< the width of the bars that scroll what does not show
};

/// A window of the program, with the widgets that mirror its controls. The user's resizing, minimising and closing
/// become the model's; the model's size, state and caption become the window's. Behind the controls lies a picture of
/// the installation folder; one that is missing or broken is no picture.
class FormWindow : public QWidget {
public:
    /// The window has a scale of its own.
    FormWindow(const Front& front, Window& model)
        : front_(front), model_(model), fonts_(pane_fonts(front_.theme, front_.scale))
    {
        open_to_screen_readers();
        setObjectName(widget_name(model));
        setProperty(accessible_role, QAccessible::Window);
        front.mirror.add(
            model, nullptr, [this] { show_model(); }, true);
        front.mirror.on_moved(model.form(), [this] { place(); });
    }

    const Scale& scale() const { return front_.scale; }
    /// Brings the window itself up to date with the model.
    void show_model()
    {
        const QString caption = to_qt(model_.caption()) + title_addition();
        setWindowTitle(caption);
        front_.theme.colour(*this, model_.back_color());
        const QSize size = front_.scale.size(model_);
        if (std::exchange(size_, size) != size) resize(size);
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

protected:
    /// Before the window shows for the first time: its place on the screen.
    virtual void before_first_show() {}
    virtual void appear() { show(); }
    /// Takes a place beside the main window that leaves its buttons of these names to be pressed, and its title bar too
    /// where there is room. The window shows lower or a little smaller than the main one where it fits then; where
    /// nothing helps it is cut.
    void stand_beside(const FormWindow& main_window, const SideWindow& window,
                      std::initializer_list<const char*> buttons);
    /// What the title bar says beside the model's caption.
    virtual QString title_addition() const { return {}; }
    /// The model is minimised, or is so no more.
    virtual void set_aside(bool aside)
    {
        if (aside) showMinimized();
        else showNormal();
    }
    /// Where a control shows; the window may move it from the place that the model gives.
    virtual QRectF fitted(const Control& control) const { return place_of(control); }
    virtual void place();
    /// Shows everything in the window as large as this.
    void set_zoom(double zoom);
    /// What the picture is stretched over.
    virtual QSize picture_size() const { return size(); }
    /// Whether the window may be closed; the user can be asked.
    virtual bool may_close() { return true; }
    /// The model gets the size in pixels that the user has given the window.
    virtual void take_size(QSize size)
    {
        model_.set_width(front_.scale.twips(size.width()));
        model_.set_height(front_.scale.twips(size.height()));
    }
    /// Tells the model of a size when its turn comes, a new one or not.
    void post_resize(QSize size)
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

    void closeEvent(QCloseEvent* event) override
    {
        event->ignore(); // the model decides
        front_.queue.submit([this] {
            if (!may_close()) return;
            Event closing{EventKind::Close, model_};
            front_.queue.send(closing);
            if (!closing.cancelled) model_.set_visible(false);
        });
    }
    void resizeEvent(QResizeEvent* event) override
    {
        if (!isMinimized()) post_resize(event->size());
    }
    void changeEvent(QEvent* event) override
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
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.fillRect(rect(), palette().color(QPalette::Window));
        if (front_.theme.look() == Look::Light) paint_picture(painter);
    }

    /// These make the widget of a control. `clicked` is called behind a click with the mouse.
    QAbstractButton& add_button(Control& control, const FontRole& role, QWidget& parent,
                                std::function<void()> clicked = {});
    QAbstractButton& add_option(OptionButton& control, QWidget& parent, std::function<void()> clicked);
    QWidget& add_frame(Control& control, QWidget& parent);
    /// What is not centred is a text of several lines.
    QLabel& add_label(Control& control, Qt::Alignment alignment, QWidget& parent);
    LineBox& add_line_box(TextBox& box, const FontRole& role, QWidget& parent, bool context_menu = false);
    TextWidget& add_text(TextControl& text, const FontSizes& fonts, const FontRole& role, QWidget& parent);
    /// Gives a widget that shows no control the font of a role.
    void add_font(QWidget& widget, const FontRole& role) { roles_.push_back({&widget, role}); }

    Front front_;
    Window& model_;
    FontSizes fonts_; // of all text views of the window

private:
    void enter(Control& control, QWidget& widget, const FontRole& role, std::function<void()> show);
    // Only the stretched picture is kept: the file is looked for and loaded again for every size of the window.
    void paint_picture(QPainter& painter)
    {
        const QSize pixels = (QSizeF(picture_size()) * devicePixelRatioF()).toSize();
        if (picture_pixels_ != pixels) {
            picture_pixels_ = pixels;
            QImageReader reader(real_path(front_.program.platform.files, U"123.jpg"));
            reader.setScaledSize(pixels);
            picture_ = QPixmap::fromImage(reader.read());
        }
        if (!picture_.isNull()) painter.drawPixmap(QRect(QPoint(0, 0), picture_size()), picture_);
    }
    std::vector<std::pair<const Control*, QWidget*>> controls_;
    std::vector<std::pair<QWidget*, FontRole>> roles_;
    QSize size_;           // as the model and the window last agreed on it
    QSize picture_pixels_; // that the picture was last loaded for
    QPixmap picture_;      // stretched
    bool shown_before_ = false;
    int front_requests_ = 0; // that were met
};

/// Gives the controls of a window the texts that tell what they do, on the screen and to a screen reader.
void set_tooltips(QWidget& window);

} // namespace tarvik

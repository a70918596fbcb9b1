#pragma once

#include "desktop/controls/control_maker.h"
#include "platform/files/files.h"

#include <QPixmap>
#include <QWidget>

class QPainter;

namespace tarvik {

/// The picture behind the controls. One that is missing or broken is no picture. Only the stretched picture is kept:
/// the file is looked for and loaded again for every size of the window.
class Backdrop {
public:
    Backdrop() = default;
    explicit Backdrop(const Files& files) : files_(&files) {}

    /// Draws the picture stretched over the whole area, if there is one.
    void paint(QPainter& painter, QSize area, double device_pixels);

private:
    const Files* files_ = nullptr; // without files there is no picture
    QSize size_;                   // that the file was last loaded for
    QPixmap stretched_;
};

/// A window of the program. The user's resizing, minimising and closing become the model's; the model's size, state and
/// caption become the window's.
class FormWindow : public QWidget {
public:
    FormWindow(Front& front, Window& model, Backdrop& backdrop);

    /// Brings the window itself up to date with the model.
    void show_model();

protected:
    /// Before the window shows for the first time: its place on the screen.
    virtual void before_first_show() {}
    virtual void appear() { show(); }
    /// What the title bar says beside the model's caption.
    virtual QString title_addition() const { return {}; }
    /// The model is minimised, or is so no more.
    virtual void set_aside(bool aside);
    /// What the picture is stretched over.
    virtual QSize picture_size() const { return size(); }
    /// Whether the window may be closed; the user can be asked.
    virtual bool may_close() { return true; }
    /// The model gets the size in pixels that the user has given the window.
    virtual void take_size(QSize size);
    /// Tells the model of a size when its turn comes, a new one or not.
    void post_resize(QSize size);

    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

    Front& front() { return front_; }
    Window& model() { return model_; }

private:
    void show_size();
    Front& front_;
    Window& model_;
    Backdrop& backdrop_;
    QSize size_; // as the model and the window last agreed on it
    bool shown_before_ = false;
    int front_requests_ = 0; // that were met
};

/// Gives the controls of a window the texts that tell what they do, on the screen and to a screen reader.
void set_tooltips(QWidget& window);

} // namespace tarvik

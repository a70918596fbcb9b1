#pragma once

#include "desktop/controls/control_maker.h"

#include <QPixmap>
#include <QWidget>

class QPainter;

namespace tarvik {

/// A window of the program. The user's resizing, minimising and closing become the model's; the model's size, state and
/// caption become the window's. Behind the controls lies a picture of the installation folder; one that is missing or
/// broken is no picture.
class FormWindow : public QWidget {
public:
    FormWindow(Front& front, Window& model);

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
    /// Where a control shows; the window may move it from the place that the model gives.
    virtual Place fitted(const Control& control) const { return place_of(control); }
    virtual void place() { controls_.place(); }
    virtual bool has_picture() const { return true; }
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

    Front& front() const { return front_; }
    Window& model() { return model_; }
    ControlMaker& controls() { return controls_; }

private:
    void show_size();
    void paint_picture(QPainter& painter);
    Front& front_;
    Window& model_;
    ControlMaker controls_;
    QSize size_;           // as the model and the window last agreed on it
    QSize picture_pixels_; // that the picture was last loaded for
    QPixmap picture_;      // stretched
    bool shown_before_ = false;
    int front_requests_ = 0; // that were met
};

/// Gives the controls of a window the texts that tell what they do, on the screen and to a screen reader.
void set_tooltips(QWidget& window);

} // namespace tarvik

#pragma once

#include "desktop/front/front.h"

#include <QPushButton>
#include <QRadioButton>
#include <QWidget>

namespace tarvik {

/// A command button. Press and release are signalled one by one, and a click behind the release.
class ButtonWidget final : public QPushButton {
public:
    /// `clicked_by_mouse` is called when everything is done that a click with the mouse leads to.
    ButtonWidget(Front& front, Control& control, std::function<void()> clicked_by_mouse, QWidget* parent);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    Front& front_;
    Control& control_;
    std::function<void()> clicked_by_mouse_;
};

/// An option button: it shows what the model says, and a click on a selected one is a click like any other.
class OptionWidget final : public QRadioButton {
public:
    OptionWidget(Front& front, OptionButton& control, std::function<void()> clicked_by_mouse, QWidget* parent);

protected:
    void nextCheckState() override {}
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    Front& front_;
    std::function<void()> clicked_by_mouse_;
};

/// A frame around controls that belong together, with its caption inside at the top.
class FrameWidget final : public QWidget {
public:
    explicit FrameWidget(QWidget* parent);

    void set_caption(const QString& caption);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QString caption_;
};

} // namespace tarvik

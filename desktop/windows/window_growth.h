#pragma once

#include <QObject>
#include <QSize>
#include <QVariantAnimation>

class QWidget;

namespace tarvik {

/// The window grows to its size when the program starts. Any key or mouse button ends the growing at once, and whatever
/// the user does then counts. Where nobody looks, or animations are switched off, there is none.
class WindowGrowth final : public QObject {
public:
    /// `done` is called when the window has its full size.
    WindowGrowth(QWidget& window, std::function<void()> done);

    /// Begins with the window that is about to be shown. Gives whether it grows.
    bool begin(QSize full);
    QSize full() const { return full_; }
    bool running() const { return animation_.state() == QAbstractAnimation::Running; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void finish();
    QWidget& window_;
    std::function<void()> done_;
    QSize full_;
    QVariantAnimation animation_;
};

} // namespace tarvik

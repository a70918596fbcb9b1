#include "desktop/windows/window_growth.h"

#include <QApplication>
#include <QEvent>
#include <QStyle>
#include <QWidget>

namespace tarvik {

namespace {

constexpr int milliseconds = 180;
constexpr double first_part = 0.5; // of the full size

} // namespace

WindowGrowth::WindowGrowth(QWidget& window, std::function<void()> done) : window_(window), done_(std::move(done))
{
    animation_.setDuration(milliseconds);
    animation_.setStartValue(first_part);
    animation_.setEndValue(1.0);
    animation_.setEasingCurve(QEasingCurve::OutCubic);
    connect(&animation_, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& part) { window_.resize(full_ * part.toDouble()); });
    connect(&animation_, &QVariantAnimation::finished, this, [this] { finish(); });
}

bool WindowGrowth::begin(QSize full)
{
    const bool watched = QGuiApplication::platformName() != "offscreen";
    if (!watched || window_.style()->styleHint(QStyle::SH_Widget_Animate) == 0) return false;
    full_ = full;
    window_.resize(full * first_part);
    animation_.start();
    qApp->installEventFilter(this);
    return true;
}

bool WindowGrowth::eventFilter(QObject* watched, QEvent* event)
{
    const bool acts = event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress;
    if (acts && running()) {
        animation_.stop();
        finish();
    }
    return QObject::eventFilter(watched, event);
}

void WindowGrowth::finish()
{
    qApp->removeEventFilter(this);
    window_.resize(full_);
    done_();
}

} // namespace tarvik

#include "desktop/windows/window_places.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace tarvik {

namespace {

constexpr int title_bar = 36; // room for a window's frame, which is only known when it shows
constexpr int border = 8;
constexpr double share_of_large_screen = 0.62;
constexpr double most = 2;

QRect free_screen(const QWidget& window)
{
    return window.screen()->availableGeometry();
}

} // namespace

double opening_zoom(QSizeF full_size, QSize available)
{
    const double fits = std::min((available.width() - 2 * border) / full_size.width(),
                                 (available.height() - title_bar - border) / full_size.height());
    return fits < 1 ? std::max(fits, 0.25) : std::clamp(fits * share_of_large_screen, 1.0, most);
}

void place_main_window(QWidget& window, QSize side_window)
{
    const QRect free = free_screen(window);
    const int both = window.width() + side_window.width() + 3 * border;
    const int left = std::max(border, (free.width() - std::min(both, free.width())) / 2);
    const int spare = free.height() - window.height() - title_bar;
    window.move(free.left() + left, free.top() + std::max(0, spare / 3));
}

void place_beside(QWidget& window, const QWidget& main_window)
{
    const QRect free = free_screen(main_window);
    const QRect main = main_window.frameGeometry();
    const int left = std::min(main.right() + border, free.right() - window.width() - border);
    const int top = std::min(main.top(), free.bottom() - window.height() - title_bar);
    window.move(std::max(free.left(), left), std::max(free.top(), top));
}

void keep_in_reach(QWidget& window, const QWidget& main_window, std::initializer_list<const char*> buttons)
{
    constexpr int gap = 8;
    const int frame = main_window.geometry().top() - main_window.frameGeometry().top();
    for (const char* name : buttons) {
        const auto* button = main_window.findChild<QWidget*>(name);
        if (!button) continue;
        const QRect kept(button->mapToGlobal(QPoint(0, 0)), button->size());
        const QRect taken(window.pos(), window.size() + QSize(gap, frame + gap));
        if (!taken.intersects(kept)) continue;
        const int bottom = kept.top() - gap - frame;
        const int top = std::min(window.y(), std::max(free_screen(window).top(), bottom - window.height()));
        window.move(window.x(), top);
        window.resize(window.width(), std::clamp(bottom - top, window.minimumHeight(), window.height()));
    }
}

} // namespace tarvik

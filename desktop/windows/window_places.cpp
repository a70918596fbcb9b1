#include "desktop/windows/window_places.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace tarvik {

namespace {

constexpr int gap = 8;                                // between windows
constexpr double hardly_smaller = 0.93, least = 0.85; // of the main window's zoom, that a side window shows with

// What holds all of these widgets of a window, on the screen.
QRect place_on_screen(const QWidget& window, std::initializer_list<const char*> names)
{
    QRect place;
    for (const char* name : names)
        if (const auto* widget = window.findChild<QWidget*>(name))
            place |= QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
    return place;
}

// How a window would stand in a part of the screen.
struct Fit {
    QRect region;
    QSize size;
    double zoom;
    double shown; // which part of the window
};

Fit fit(const QRect& region, int frame, const SideWindow& window, double zoom)
{
    const QSizeF room(std::max(region.width(), 1), std::max(region.height() - frame, 1));
    const double fits = std::min(room.width() / window.least_size.width(), room.height() / window.least_size.height());
    const double taken = std::clamp(fits, least * zoom, zoom);
    const QSizeF wanted = window.least_size * taken;
    const QSizeF size = wanted.boundedTo(room);
    const double shown = std::round(100 * size.width() * size.height() / (wanted.width() * wanted.height())) / 100;
    const QSizeF bars(size.height() < wanted.height() ? window.bar : 0, size.width() < wanted.width() ? window.bar : 0);
    return {region, (window.full_size * taken + bars).boundedTo(room).toSize(), taken, shown};
}

} // namespace

SidePlace side_place(const SideWindow& window, double zoom, const QWidget& main_window,
                     std::initializer_list<const char*> buttons)
{
    const QRect free = main_window.screen()->availableGeometry(), main = main_window.frameGeometry();
    const int frame = std::max(main_window.geometry().top() - main.top(), 0); // of every window's upper edge
    const QRect kept = place_on_screen(main_window, buttons);
    const auto region = [](int left, int top, int right, int bottom) {
        return QRect(QPoint(left, top), QPoint(right, bottom));
    };
    const int left = free.left() + gap, right = free.right() - gap;
    const QRect regions[] = {
        region(main.right() + gap, free.top(), right, free.bottom()),
        region(left, main.top() + frame, right, kept.top() - gap),
        region(left, free.top(), right, kept.top() - gap),
        region(kept.right() + gap, free.top(), right, free.bottom()),
        region(free.left(), free.top(), kept.left() - gap, free.bottom()),
    };
    std::vector<Fit> fits;
    for (const QRect& each : regions)
        fits.push_back(fit(each, frame, window, fits.empty() ? zoom : zoom * window.over_main));
    const auto fitting = std::ranges::find_if(
        fits, [zoom](const Fit& each) { return each.shown == 1 && each.zoom >= hardly_smaller * zoom; });
    const auto best = fitting != fits.end() ? fitting : std::ranges::max_element(fits, {}, [](const Fit& each) {
        return std::pair(each.shown, each.zoom);
    });
    const QRect& at = best->region;
    const QSize size = best->size;
    const int x = std::clamp(main.right() + gap, at.left(), std::max(at.left(), at.right() - size.width()));
    const int y = std::clamp(main.top(), at.top(), std::max(at.top(), at.bottom() - frame - size.height()));
    return {{x, y}, size, best->zoom};
}

} // namespace tarvik

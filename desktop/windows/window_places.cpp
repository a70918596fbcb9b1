#include "desktop/windows/form_window.h"

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

void FormWindow::stand_beside(const FormWindow& main_window, const SideWindow& window,
                              std::initializer_list<const char*> buttons)
{
    const double zoom = main_window.scale().zoom;
    const QRect free = main_window.screen()->availableGeometry(), main = main_window.frameGeometry();
    const int frame = std::max(main_window.geometry().top() - main.top(), 0); // of every window's upper edge
    QRect kept;
    for (const char* name : buttons)
        if (const auto* widget = main_window.findChild<QWidget*>(name))
            kept |= QRect(widget->mapToGlobal(QPoint(0, 0)), widget->size());
    const int left = free.left() + gap, right = free.right() - gap;
    const QRect regions[] = {
        {QPoint(main.right() + gap, free.top()), QPoint(right, free.bottom())},
        {QPoint(left, main.top() + frame), QPoint(right, kept.top() - gap)},
        {QPoint(left, free.top()), QPoint(right, kept.top() - gap)},
        {QPoint(kept.right() + gap, free.top()), QPoint(right, free.bottom())},
        {free.topLeft(), QPoint(kept.left() - gap, free.bottom())},
    };
    std::vector<Fit> fits;
    for (const QRect& each : regions)
        fits.push_back(fit(each, frame, window, fits.empty() ? zoom : zoom * window.over_main));
    const auto [at, its_size, taken, shown] = *std::ranges::max_element(fits, {}, [zoom](const Fit& each) {
        return std::pair(each.shown, each.zoom >= hardly_smaller * zoom ? zoom : each.zoom);
    });
    const int x = std::clamp(main.right() + gap, at.left(), std::max(at.left(), at.right() - its_size.width()));
    const int y = std::clamp(main.top(), at.top(), std::max(at.top(), at.bottom() - frame - its_size.height()));
    set_zoom(taken);
    resize(its_size);
    move(x, y); // of the frame, as long as there is no window of the system's
}

} // namespace tarvik

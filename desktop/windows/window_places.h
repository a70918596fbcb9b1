#pragma once

#include <QPoint>
#include <QSize>
#include <QSizeF>

#include <initializer_list>

class QWidget;

/// Where the side windows stand on the screen, and how large they can be.
namespace tarvik {

/// A window that stands beside the main window; sizes are in pixels at zoom 1.
struct SideWindow {
    QSizeF full_size;
    QSizeF least_size;    ///< that still shows everything
    double over_main = 1; ///< as large a part of its size it shows with where it lies over the main window
    int bar = 0;          ///< the width of the bars that scroll what does not show
};
struct SidePlace {
    QPoint corner; // of the frame
    QSize size;    // without the frame
    double zoom;
};

/// The place for a window that leaves the main window's buttons of these names to be pressed, and its title bar too
/// where there is room. It shows lower or a little smaller than `zoom` where it fits then; where nothing helps it is
/// cut.
SidePlace side_place(const SideWindow& window, double zoom, const QWidget& main_window,
                     std::initializer_list<const char*> buttons);

} // namespace tarvik

#pragma once

#include <QPoint>
#include <QSize>
#include <QSizeF>

#include <initializer_list>

class QWidget;

/// Where the windows stand on the screen, and how large they can be.
namespace tarvik {

/// How much larger or smaller than designed the windows show, so that the main window of this size fits into the free
/// part of the screen with its title bar; on a very large screen they show larger.
double opening_zoom(QSizeF full_size, QSize available);

/// The main window stands so that the window of column numbers has room on its right where the screen is wide enough.
void place_main_window(QWidget& window, QSize side_window);
/// Beside the main window, or at the screen's edge.
void place_beside(QWidget& window, const QWidget& main_window);

/// Makes a window lower where it would hide the main window's buttons of these names, and moves it up as far as is
/// needed for that. It never gets lower than its smallest height.
void keep_in_reach(QWidget& window, const QWidget& main_window, std::initializer_list<const char*> buttons);

} // namespace tarvik

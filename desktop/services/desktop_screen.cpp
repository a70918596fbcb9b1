#include "desktop/services/desktop_platform.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>

namespace tarvik {

namespace {

constexpr double twips_an_inch = 1440;
constexpr double enough_width = 28800, enough_height = 16200;
constexpr int patience = 500;     // milliseconds of work before its progress shows
constexpr int between_shows = 60; // milliseconds; a run that reports more often is not slowed down

} // namespace

double DesktopScreen::width() const
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return enough_width;
    return std::max(enough_width, screen->size().width() * twips_an_inch / screen->logicalDotsPerInchX());
}

double DesktopScreen::height() const
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return enough_height;
    return std::max(enough_height, screen->size().height() * twips_an_inch / screen->logicalDotsPerInchY());
}

// What the user does meanwhile waits in the toolkit; the windows are drawn and answer the system.
void DesktopScreen::refresh()
{
    if (since_shown_.isValid() && since_shown_.elapsed() < between_shows) return;
    work_.show();
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    since_shown_.start();
}

void DesktopScreen::progress(std::uint64_t done, std::uint64_t total)
{
    if (total == 0 || done >= total) {
        end_progress();
        return;
    }
    if (!since_start_.isValid()) since_start_.start();
    if (!cursor_) cursor_.emplace(true);
    if (since_start_.elapsed() < patience) return;
    work_.show_part(static_cast<double>(done) / static_cast<double>(total));
    refresh();
}

void DesktopScreen::end_progress()
{
    since_start_.invalidate();
    cursor_.reset();
    work_.show_part(-1);
}

} // namespace tarvik

#include "desktop/look/busy_cursor.h"

#include <QCursor>
#include <QGuiApplication>

namespace tarvik {

BusyCursor::BusyCursor(bool shown) : shown_(shown)
{
    if (shown_) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

BusyCursor::~BusyCursor()
{
    if (shown_) QGuiApplication::restoreOverrideCursor();
}

IdleCursor::IdleCursor()
{
    for (; QGuiApplication::overrideCursor(); ++hidden_) QGuiApplication::restoreOverrideCursor();
}

IdleCursor::~IdleCursor()
{
    for (; hidden_ > 0; --hidden_) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
}

} // namespace tarvik

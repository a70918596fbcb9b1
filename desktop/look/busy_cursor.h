#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace tarvik {

/// The pointer shows that the program works, as long as the object lives.
class BusyCursor {
public:
    BusyCursor() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyCursor() { QGuiApplication::restoreOverrideCursor(); }
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;
};

} // namespace tarvik

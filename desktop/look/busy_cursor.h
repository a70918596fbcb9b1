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

/// Takes every busy pointer away while a dialog waits for the user.
class IdleCursor {
public:
    IdleCursor()
    {
        for (; QGuiApplication::overrideCursor(); ++hidden_) QGuiApplication::restoreOverrideCursor();
    }
    ~IdleCursor()
    {
        for (; hidden_ > 0; --hidden_) QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    }
    IdleCursor(const IdleCursor&) = delete;
    IdleCursor& operator=(const IdleCursor&) = delete;

private:
    int hidden_ = 0;
};

} // namespace tarvik

#pragma once

namespace tarvik {

/// The pointer shows that the program works, as long as the object lives.
class BusyCursor {
public:
    explicit BusyCursor(bool shown);
    ~BusyCursor();
    BusyCursor(const BusyCursor&) = delete;
    BusyCursor& operator=(const BusyCursor&) = delete;

private:
    bool shown_;
};

/// Takes every busy pointer away while a dialog waits for the user.
class IdleCursor {
public:
    IdleCursor();
    ~IdleCursor();
    IdleCursor(const IdleCursor&) = delete;
    IdleCursor& operator=(const IdleCursor&) = delete;

private:
    int hidden_ = 0;
};

} // namespace tarvik

#pragma once

#include "desktop/front/front.h"

#include <QTimer>

#include <memory>
#include <vector>

namespace tarvik {

/// Lets the model's timers run. A tick that falls due while a handler runs waits, and does not pile up.
class ModelTimers {
public:
    explicit ModelTimers(Front& front);

private:
    struct Running {
        explicit Running(Timer& timer_) : timer(timer_) {}
        Timer& timer;
        QTimer clock;
        bool waiting = false;
    };
    void add(Timer& timer);
    void fell_due(Running& running);

    Front& front_;
    std::vector<std::unique_ptr<Running>> timers_;
};

} // namespace tarvik

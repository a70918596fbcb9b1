#pragma once

#include "desktop/front/event_queue.h"
#include "desktop/front/mirror.h"
#include "desktop/look/theme.h"

namespace tarvik {

/// What every window and control of the desktop works with.
struct Front {
    Program& program;
    EventQueue& queue;
    Mirror& mirror;
    const Theme& theme;
    const Scale& scale;
};

} // namespace tarvik

#pragma once

#include "desktop/front/event_queue.h"
#include "desktop/front/mirror.h"
#include "desktop/look/theme.h"

namespace tarvik {

/// What the controls of a window work with, and the window's own scale.
struct Front {
    Program& program;
    EventQueue& queue;
    Mirror& mirror;
    const Theme& theme;
    Scale scale;
};

} // namespace tarvik

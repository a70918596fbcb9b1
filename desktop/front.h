#pragma once

#include "desktop/event_queue.h"
#include "desktop/mirror.h"
#include "desktop/pane_fonts.h"
#include "desktop/theme.h"

namespace tarvik {

/// What every window and control of the desktop works with.
struct Front {
    Program& program;
    EventQueue& queue;
    Mirror& mirror;
    const Theme& theme;
    const Scale& scale;
    const PaneFonts& pane_fonts;
};

} // namespace tarvik

#pragma once

#include "mainwindow/form1.h"

#include <array>

namespace tarvik {

/// The frame that each of the buttons and arrows of the key sequences stands in, by index; 1 stands for Frame1.
inline constexpr std::array<int, 5> esc_frames{1, 2, 3, 4, 2};
inline constexpr std::array<int, 5> q_frames{1, 2, 3, 4, 2};
inline constexpr std::array<int, 7> third_key_frames{1, 3, 4, 2, 2, 2, 2};
inline constexpr std::array<int, 6> arrow_frames{1, 2, 3, 4, 2, 2};

} // namespace tarvik

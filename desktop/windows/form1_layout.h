#pragma once

#include "desktop/controls/form_layout.h"
#include "mainwindow/form1.h"

#include <array>

namespace tarvik {

/// The height of the status line along the main window's lower edge, in twips.
inline constexpr double status_height = 290;

/// Where a control of the main window shows. The model's places stand, but for three that would hide something: the
/// number box ends above the "◎" at its corner, a row of frames that runs over the window's edge is pushed back inside,
/// and the frames make room for the status line by their empty lower edge, and a little by moving up.
Place fitted_place(const Form1& form1, const Control& control);

/// The frame that each of the buttons and arrows of the key sequences stands in, by index; 1 stands for Frame1.
inline constexpr std::array<int, 5> esc_frames{1, 2, 3, 4, 2};
inline constexpr std::array<int, 5> q_frames{1, 2, 3, 4, 2};
inline constexpr std::array<int, 7> third_key_frames{1, 3, 4, 2, 2, 2, 2};
inline constexpr std::array<int, 6> arrow_frames{1, 2, 3, 4, 2, 2};

} // namespace tarvik

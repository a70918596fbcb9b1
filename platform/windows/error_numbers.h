#pragma once

#include <windows.h>

namespace tarvik {

/// The error number that stands for what the system reports; EIO where none does.
int number_of(DWORD system) noexcept;

} // namespace tarvik

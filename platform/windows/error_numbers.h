#pragma once

#include <windows.h>

namespace tarvik {

/// A disk quota that is used up is told by this number of the system's: <cerrno> has none for it, and the compiler's
/// headers do not name it.
inline constexpr int full_quota = 1295;

/// The error number that stands for what the system reports; EIO where none does.
int number_of(DWORD system) noexcept;

} // namespace tarvik

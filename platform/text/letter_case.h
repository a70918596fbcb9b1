#pragma once

#include <array>
#include <cstdint>

namespace tarvik {

/// By character of the basic plane, what lower() gives: for loops over whole documents.
const std::array<char16_t, 0x10000>& lower_table() noexcept;

} // namespace tarvik

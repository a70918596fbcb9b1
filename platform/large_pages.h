#pragma once

#include <cstddef>

namespace tarvik {

/// Asks the system to lay a large block of memory in large pages, which it clears and finds faster. It is an advice: a
/// system that has none gives usual pages.
void prefer_large_pages(void* block, std::size_t bytes) noexcept;

} // namespace tarvik

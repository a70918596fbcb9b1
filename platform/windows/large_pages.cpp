#include "platform/large_pages.h"

namespace tarvik {

void prefer_large_pages(void* /*block*/, std::size_t /*bytes*/) noexcept {}

} // namespace tarvik

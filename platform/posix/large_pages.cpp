#include "platform/large_pages.h"

#include <cstdint>
#include <sys/mman.h>

namespace tarvik {

void prefer_large_pages(void* block, std::size_t bytes) noexcept
{
#ifdef MADV_HUGEPAGE
    constexpr std::size_t page = 4096, large = std::size_t{4} << 20;
    // Whole pages: a block that is grown in its place must be of one kind from its first page on.
    const std::size_t before = reinterpret_cast<std::uintptr_t>(block) % page;
    if (bytes >= large) ::madvise(static_cast<char*>(block) - before, bytes + before, MADV_HUGEPAGE);
#else
    static_cast<void>(block), static_cast<void>(bytes);
#endif
}

} // namespace tarvik

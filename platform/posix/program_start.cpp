#include "platform/program_start.h"

#include "platform/large_pages.h"

#include <csignal>
#include <cstdint>
#include <malloc.h>
#include <sys/mman.h>

namespace tarvik {

namespace {

/// A document's memory goes back to the system when the document goes, and what grows is moved and not copied: both do
/// what the system's allocator gives pages of their own. The threshold would rise with use, and then the holes between
/// what is kept would pile up. What is smaller is used again, up to some megabytes.
void give_back_large_blocks()
{
#ifdef M_MMAP_THRESHOLD
    ::mallopt(M_MMAP_THRESHOLD, 1 << 20);
    ::mallopt(M_TRIM_THRESHOLD, 16 << 20);
    ::mallopt(M_ARENA_MAX, 1);
#endif
}

} // namespace

std::vector<std::string> start_program(int count, char** words)
{
    give_back_large_blocks();
    // A limit of size, too, is a failed write, which the user hears of, and no sudden end.
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
    return {words + (count > 0 ? 1 : 0), words + count};
}

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

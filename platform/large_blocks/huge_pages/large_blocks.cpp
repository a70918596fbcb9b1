#include "platform/large_blocks/large_blocks.h"

#include <cstddef>
#include <cstdlib>
#include <limits>
#include <malloc.h>
#include <new>
#include <sys/mman.h>

/// The documents and tables of a large report take hundreds of megabytes, and a quarter of the time of opening and
/// querying it would go into fetching them from the system in pages of four kilobytes. So the program's large blocks,
/// and only they, ask for huge pages. It is an advice: a system that has none gives usual pages.

namespace {

constexpr std::size_t huge_page = std::size_t{2} << 20, large = 2 * huge_page;

void* allocate(std::size_t size) noexcept
{
    if (size < large) return std::malloc(size == 0 ? 1 : size);
    if (size > std::numeric_limits<std::ptrdiff_t>::max() - huge_page) return nullptr;
    void* const block = std::aligned_alloc(huge_page, (size + huge_page - 1) / huge_page * huge_page);
    if (block) ::madvise(block, size, MADV_HUGEPAGE);
    return block;
}

} // namespace

void tarvik::reuse_freed_memory()
{
    constexpr int kept_bytes = 256 << 20;
    ::mallopt(M_MMAP_MAX, 0);
    ::mallopt(M_ARENA_MAX, 1);
    ::mallopt(M_TRIM_THRESHOLD, kept_bytes);
}

void* operator new(std::size_t size)
{
    for (;;) {
        if (void* const block = allocate(size)) return block;
        const std::new_handler make_room = std::get_new_handler();
        if (!make_room) throw std::bad_alloc();
        make_room();
    }
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}

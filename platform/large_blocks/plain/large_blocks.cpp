#include "platform/large_blocks/large_blocks.h"

// The system's allocator, or a sanitizer's, is left as it is.
void tarvik::reuse_freed_memory() {}

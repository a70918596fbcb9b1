#pragma once

namespace tarvik::test {

/// For tests that save thousands of times, each save flushed: temporary folders lie in memory from now on, where the
/// system has a file system there.
void keep_temporary_folders_in_memory();

} // namespace tarvik::test

#pragma once

#include <filesystem>
#include <zlib.h>

namespace tarvik {

/// A file for gzread(); null when it cannot be opened.
gzFile open_gzip(const std::filesystem::path& path);

} // namespace tarvik

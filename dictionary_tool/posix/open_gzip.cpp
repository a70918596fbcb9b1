#include "dictionary_tool/open_gzip.h"

namespace tarvik {

gzFile open_gzip(const std::filesystem::path& path)
{
    return gzopen(path.c_str(), "rb");
}

} // namespace tarvik

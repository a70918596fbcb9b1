#include "engines/packages/package_cache.h"

namespace tarvik::ooxml {

namespace {

constexpr std::uint64_t largest_kept = 4U << 20U;
constexpr std::uint64_t largest_file = 512U << 20U; // it is held in memory

} // namespace

std::shared_ptr<const Package> PackageCache::open(TextView path, const std::function<std::string()>& read)
{
    const FileStamp stamp = files_.stamp(path);
    const auto make = [&] { return std::make_shared<const Package>(read()); };
    if (stamp.size > largest_file) throw Damage(U"文件过大。");
    if (stamp.size > largest_kept) return make();
    return packages_.get(path, stamp, make);
}

} // namespace tarvik::ooxml

#include "engines/packages/package_application.h"

namespace tarvik::ooxml {

namespace {

constexpr std::uint64_t largest_kept = 4U << 20U;
constexpr std::uint64_t largest_file = 512U << 20U; // it is held in memory

} // namespace

std::shared_ptr<const Package> PackageCache::open(TextView path)
{
    const FileStamp stamp = files_.stamp(path);
    const auto read = [&] { return std::make_shared<const Package>(files_.read(path)); };
    if (stamp.size > largest_file) throw Damage(U"文件过大。");
    if (stamp.size > largest_kept) return read();
    return packages_.get(path, stamp, read);
}

} // namespace tarvik::ooxml

#include "office/packages/package_cache.h"

#include <algorithm>
#include <chrono>

namespace tarvik::ooxml {

namespace {

constexpr std::size_t most_packages = 8;
constexpr std::uint64_t largest_kept = 4U << 20U;
constexpr std::uint64_t largest_file = 512U << 20U; // it is held in memory
// A file can change twice within one step of the file system's clock and look the same.
constexpr std::chrono::milliseconds settling_time{100};

bool has_settled(const FileStamp& stamp)
{
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    return std::chrono::nanoseconds(stamp.changed_nanoseconds) + settling_time < now;
}

} // namespace

std::shared_ptr<const Package> PackageCache::open(TextView path)
{
    const auto file = files_.resolve(path);
    // The stamp is taken first: a change while the file is read then shows at the next opening.
    const auto stamp = files_.stamp(path);
    const auto known = std::find_if(known_.begin(), known_.end(), [&](const Known& one) { return one.file == file; });
    if (known != known_.end()) {
        known_.splice(known_.begin(), known_, known);
        if (known_.front().stamp == stamp) return known_.front().package;
        known_.pop_front();
    }
    if (stamp.size > largest_file) throw Damage(U"文件过大。");
    auto package = std::make_shared<const Package>(files_.read(path));
    if (stamp.size <= largest_kept && has_settled(stamp)) {
        known_.push_front({file, stamp, package});
        if (known_.size() > most_packages) known_.pop_back();
    }
    return package;
}

} // namespace tarvik::ooxml

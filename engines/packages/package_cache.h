#pragma once

#include "engines/packages/package.h"
#include "platform/files/file_cache.h"

#include <functional>
#include <memory>
#include <vector>

namespace tarvik::ooxml {

/// The packages opened last, so that a template that a run opens for every sheet is read and inflated once.
class PackageCache {
public:
    explicit PackageCache(Files& files) : files_(files) {}

    /// `read` gives the package's bytes. Damage when it is no package that can be read, or the file is too large.
    std::shared_ptr<const Package> open(TextView path, const std::function<std::string()>& read)
    {
        constexpr std::uint64_t largest_kept = 4U << 20U, largest_file = 512U << 20U; // it is held in memory
        const FileStamp stamp = files_.stamp(path);
        const auto make = [&] { return std::make_shared<const Package>(read()); };
        if (stamp.size > largest_file) throw Damage(U"文件过大。");
        return stamp.size > largest_kept ? make() : packages_.get(path, stamp, make);
    }
    /// Of the file itself. Failure when it cannot be read.
    std::shared_ptr<const Package> open(TextView path)
    {
        return open(path, [&] { return files_.read(path); });
    }

private:
    Files& files_;
    FileCache<std::shared_ptr<const Package>> packages_;
};

} // namespace tarvik::ooxml

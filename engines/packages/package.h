#pragma once

#include "engines/packages/damage.h"
#include "platform/files/file_cache.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include <zip.h>

namespace tarvik::ooxml {

/// What names of one part have in common: they have no leading separator and are equal without regard to case.
std::string part_key(std::string_view name);

/// What a new package has other than the old one. Parts that are not named stay as they are.
struct PartChanges {
    std::map<std::string, std::string> written; ///< part name to contents; parts that are not there yet are added
    std::set<std::string> removed;
};

/// A zip container of parts in memory, as documents and workbooks are. It never changes; a changed package is a new
/// string of bytes. Part names have no leading separator and are found without regard to case. Nothing in it is
/// trusted: sizes are bounded before memory is taken, and everything unreadable is Damage.
class Package {
public:
    explicit Package(std::string bytes);
    Package(const Package&) = delete;
    Package& operator=(const Package&) = delete;

    const std::string& bytes() const noexcept { return bytes_; }
    bool has(std::string_view part) const;
    /// The contents, inflated when first asked for and kept as long as the package.
    const std::string& part(std::string_view name) const;
    /// What somebody works out of the package, one thing for each package, kept with it for who opens it next.
    template <typename Thing, typename Make>
    std::shared_ptr<const Thing> derived(Make&& make) const
    {
        if (!derived_) derived_ = std::shared_ptr<const Thing>(make());
        return std::static_pointer_cast<const Thing>(derived_);
    }
    /// The package with these changes: all other entries keep their compressed bytes, order and time. Added parts
    /// follow behind, dated as the first one is.
    std::string with(const PartChanges& changes) const;

private:
    struct Discard {
        void operator()(zip_t* archive) const noexcept { zip_discard(archive); }
    };
    struct Release {
        void operator()(zip_source_t* source) const noexcept { zip_source_free(source); }
    };
    using Archive = std::unique_ptr<zip_t, Discard>;
    using Source = std::unique_ptr<zip_source_t, Release>;

    static Archive open(const Source& source, int flags);
    static void write(zip_t* archive, std::optional<zip_uint64_t> entry, const std::string& name,
                      const std::string& contents);
    zip_uint64_t index_of(std::string_view name) const;
    std::string inflate(zip_uint64_t index, std::string_view name) const;

    std::string bytes_;
    Source source_;
    Archive archive_;
    std::map<std::string, zip_uint64_t, std::less<>> entries_; // by part_key()
    mutable std::map<zip_uint64_t, std::string> inflated_;
    mutable std::shared_ptr<const void> derived_;
    mutable std::uint64_t memory_ = 0; // that the trees of the inflated parts may take
};

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

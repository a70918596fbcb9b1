#pragma once

#include "engines/packages/package.h"
#include "platform/files/file_cache.h"

#include <functional>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvik::ooxml {

/// The packages opened last, so that a template that a run opens for every sheet is read and inflated once.
class PackageCache {
public:
    explicit PackageCache(Files& files) : files_(files) {}

    /// Damage when it is no package that can be read; Failure when the file cannot be.
    std::shared_ptr<const Package> open(TextView path);

private:
    Files& files_;
    FileCache<std::shared_ptr<const Package>> packages_;
};

/// An application of the embedded engine behind the interfaces of an application and its file.
template <typename Application, typename File>
class PackageApplication final : public Application {
public:
    using Open = std::function<std::unique_ptr<File>(Text path, std::shared_ptr<const Package> package)>;

    /// `kind` is what the user calls such a file.
    PackageApplication(std::u32string_view kind, std::shared_ptr<PackageCache> cache, Open open)
        : kind_(kind), cache_(std::move(cache)), open_(std::move(open))
    {
    }

    void set_visible(bool /*visible*/) override {} // there is no window to show

    File& open(TextView path) override
    {
        auto package = naming_file(kind_, path, [&] { return cache_->open(path); });
        opened_.push_back(open_(path.str(), std::move(package)));
        return *opened_.back();
    }

    void quit() override { opened_.clear(); }

private:
    std::u32string_view kind_;
    std::shared_ptr<PackageCache> cache_;
    Open open_;
    std::vector<std::unique_ptr<File>> opened_;
};

} // namespace tarvik::ooxml

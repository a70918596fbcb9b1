#pragma once

#include "engines/packages/package_cache.h"
#include "platform/platform.h"

#include <memory>
#include <string_view>
#include <utility>
#include <vector>

namespace tarvik::ooxml {

/// An application of the embedded engine: `Opened` is what it makes of a package, behind the interfaces of an
/// application and its file.
template <typename Application, typename File, typename Opened>
class PackageApplication final : public Application {
public:
    /// `kind` is what the user calls such a file.
    PackageApplication(std::u32string_view kind, Files& files, Printer& printer, std::shared_ptr<PackageCache> cache)
        : kind_(kind), files_(files), printer_(printer), cache_(std::move(cache))
    {
    }

    void set_visible(bool /*visible*/) override {} // there is no window to show

    File& open(TextView path) override
    {
        auto package = naming_file(kind_, path, [&] { return cache_->open(path); });
        opened_.push_back(std::make_unique<Opened>(files_, printer_, path.str(), std::move(package)));
        return *opened_.back();
    }

    void quit() override { opened_.clear(); }

private:
    std::u32string_view kind_;
    Files& files_;
    Printer& printer_;
    std::shared_ptr<PackageCache> cache_;
    std::vector<std::unique_ptr<Opened>> opened_;
};

} // namespace tarvik::ooxml

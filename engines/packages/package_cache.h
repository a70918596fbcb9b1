#pragma once

#include "engines/packages/package.h"
#include "platform/files/file_cache.h"

#include <memory>

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

} // namespace tarvik::ooxml

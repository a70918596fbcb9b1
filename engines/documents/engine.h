#pragma once

#include "engines/automation.h"
#include "platform/platform.h"

#include <memory>

namespace tarvik {

namespace ooxml {
class PackageCache;
}

/// The embedded engine for documents that are WordprocessingML packages, whatever their names. Everything in a document
/// that no operation names stays as it is, unchanged parts byte for byte; files are read and replaced as a whole.
/// `files` and `printer` must outlive it.
class OoxmlDocuments {
public:
    OoxmlDocuments(Files& files, Printer& printer);
    ~OoxmlDocuments();

    std::unique_ptr<DocumentApplication> create();

private:
    Files& files_;
    Printer& printer_;
    std::shared_ptr<ooxml::PackageCache> cache_;
};

} // namespace tarvik

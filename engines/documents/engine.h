#pragma once

#include "engines/automation.h"
#include "platform/platform.h"

#include <functional>
#include <memory>
#include <string>

namespace tarvik {

namespace ooxml {

class Package;
class PackageCache;

/// The bytes of a document's file, made of those of its package. Throws Damage.
using FileOfPackage = std::function<std::string(const std::string& package)>;

/// A document opened from a file; `package` shows what it holds.
std::unique_ptr<TextDocument> open_document(
    Files& files, Printer& printer, Text path, std::shared_ptr<const Package> package,
    FileOfPackage file_of = [](const std::string& package) { return package; });

} // namespace ooxml

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

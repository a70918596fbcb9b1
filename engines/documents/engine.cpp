#include "engines/documents/engine.h"

#include "engines/documents/text_document.h"
#include "engines/packages/package_application.h"

namespace tarvik {

OoxmlDocuments::OoxmlDocuments(Files& files, Printer& printer)
    : files_(files), printer_(printer), cache_(std::make_shared<ooxml::PackageCache>(files))
{
}

OoxmlDocuments::~OoxmlDocuments() = default;

std::unique_ptr<DocumentApplication> OoxmlDocuments::create()
{
    return std::make_unique<ooxml::PackageApplication<DocumentApplication, TextDocument>>(
        U"文档", cache_,
        [&files = files_, &printer = printer_](Text path, std::shared_ptr<const ooxml::Package> package) {
            return std::make_unique<ooxml::OoxmlTextDocument>(files, printer, std::move(path), std::move(package));
        });
}

} // namespace tarvik

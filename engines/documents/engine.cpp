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
    return std::make_unique<ooxml::PackageApplication<DocumentApplication, TextDocument, ooxml::OoxmlTextDocument>>(
        U"文档", files_, printer_, cache_);
}

} // namespace tarvik

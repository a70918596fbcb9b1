#include "office/documents/engine.h"

#include "office/documents/text_document.h"
#include "office/packages/package_cache.h"

#include <vector>

namespace tarvik {

namespace {

class OoxmlDocumentApplication final : public DocumentApplication {
public:
    OoxmlDocumentApplication(Files& files, Printer& printer, std::shared_ptr<ooxml::PackageCache> cache)
        : files_(files), printer_(printer), cache_(std::move(cache))
    {
    }

    void set_visible(bool /*visible*/) override {} // there is no window to show

    TextDocument& open(TextView path) override
    {
        auto package = ooxml::naming_file(U"文档", path, [&] { return cache_->open(path); });
        documents_.push_back(
            std::make_unique<ooxml::OoxmlTextDocument>(files_, printer_, path.str(), std::move(package)));
        return *documents_.back();
    }

    void quit() override { documents_.clear(); }

private:
    Files& files_;
    Printer& printer_;
    std::shared_ptr<ooxml::PackageCache> cache_;
    std::vector<std::unique_ptr<TextDocument>> documents_;
};

} // namespace

OoxmlDocuments::OoxmlDocuments(Files& files, Printer& printer)
    : files_(files), printer_(printer), cache_(std::make_shared<ooxml::PackageCache>(files))
{
}

OoxmlDocuments::~OoxmlDocuments() = default;

std::unique_ptr<DocumentApplication> OoxmlDocuments::create()
{
    return std::make_unique<OoxmlDocumentApplication>(files_, printer_, cache_);
}

} // namespace tarvik

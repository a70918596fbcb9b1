#pragma once

#include "office/automation.h"
#include "office/documents/engine.h"
#include "platform/platform.h"

#include <memory>

namespace tarvik {

namespace ooxml {
class PackageCache;
}

/// The embedded engines: spreadsheets in .xlsx and .xlsm files, edited in place, and documents (see OoxmlDocuments).
/// Everything in a workbook that no operation names stays byte for byte; files are read and replaced as a whole.
/// `files` and `printer` must outlive it.
class OoxmlEngines final : public OfficeEngines {
public:
    OoxmlEngines(Files& files, Printer& printer);
    ~OoxmlEngines() override;

    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override;
    std::unique_ptr<DocumentApplication> create_document() override { return documents_.create(); }

private:
    Files& files_;
    Printer& printer_;
    std::shared_ptr<ooxml::PackageCache> cache_;
    OoxmlDocuments documents_;
};

} // namespace tarvik

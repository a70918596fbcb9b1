#pragma once

#include "office/automation.h"
#include "platform/platform.h"

#include <memory>

namespace tarvik {

namespace ooxml {
class PackageCache;
}

/// The embedded engine: spreadsheets in .xlsx and .xlsm files, edited in place. Everything in a workbook that no
/// operation names stays byte for byte; files are read and replaced as a whole. `files` and `printer` must outlive it.
/// Creating a document application is a Failure: this engine has none.
class OoxmlEngines final : public OfficeEngines {
public:
    OoxmlEngines(Files& files, Printer& printer);
    ~OoxmlEngines() override;

    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override;
    std::unique_ptr<DocumentApplication> create_document() override;

private:
    Files& files_;
    Printer& printer_;
    std::shared_ptr<ooxml::PackageCache> cache_;
};

} // namespace tarvik

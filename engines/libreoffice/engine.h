#pragma once

#include "engines/automation.h"
#include "engines/libreoffice/libreoffice.h"
#include "engines/spreadsheets/formula_services.h"
#include "platform/platform.h"

namespace tarvik {

namespace ooxml {
class PackageCache;
}

/// The engine that has the suite of this system read and write files: workbooks in .xls, .xlsx and .xlsm, binary
/// documents and packages. The suite works on copies of its own; the files are read and replaced as a whole. `office`,
/// `files` and `printer` must outlive the engines.
class LibreOfficeEngines final : public OfficeEngines {
public:
    LibreOfficeEngines(libreoffice::LibreOffice& office, Files& files, Printer& printer, FormulaServices services = {});

    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override;
    std::unique_ptr<DocumentApplication> create_document() override;

private:
    libreoffice::LibreOffice& office_;
    Files& files_;
    Printer& printer_;
    FormulaServices services_;
    std::shared_ptr<ooxml::PackageCache> packages_;
};

/// Whether the suite of this system edits files in place. One that does not converts them, calculates and prints.
bool suite_edits() noexcept;

namespace libreoffice {

/// A workbook package (.xlsx, .xlsm) with every formula calculated anew, as LibreOffice stores it as .xlsx: each
/// formula cell holds its result. Throws Damage.
std::string recalculated(LibreOffice& office, std::string_view package);

} // namespace libreoffice

} // namespace tarvik

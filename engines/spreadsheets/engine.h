#pragma once

#include "engines/automation.h"
#include "engines/spreadsheets/formula_services.h"

namespace tarvik {

namespace ooxml {
class PackageCache;
}

/// The embedded engine for workbooks in .xlsx and .xlsm files. Everything in a workbook that no operation names stays
/// byte for byte; files are read and replaced as a whole. `files` and `printer` must outlive it and its applications.
class OoxmlSpreadsheets {
public:
    OoxmlSpreadsheets(Files& files, Printer& printer, FormulaServices services = {});
    ~OoxmlSpreadsheets();

    std::unique_ptr<SpreadsheetApplication> create();

private:
    Files& files_;
    Printer& printer_;
    FormulaServices services_;
    std::shared_ptr<ooxml::PackageCache> cache_;
};

} // namespace tarvik

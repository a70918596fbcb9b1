#include "engines/spreadsheets/engine.h"

#include "engines/packages/package_application.h"
#include "engines/spreadsheets/workbook.h"

namespace tarvik {

OoxmlSpreadsheets::OoxmlSpreadsheets(Files& files, Printer& printer)
    : files_(files), printer_(printer), cache_(std::make_shared<ooxml::PackageCache>(files))
{
}

OoxmlSpreadsheets::~OoxmlSpreadsheets() = default;

std::unique_ptr<SpreadsheetApplication> OoxmlSpreadsheets::create()
{
    return std::make_unique<ooxml::PackageApplication<SpreadsheetApplication, Workbook, ooxml::OoxmlWorkbook>>(
        U"工作簿", files_, printer_, cache_);
}

} // namespace tarvik

#include "engines/spreadsheets/engine.h"

#include "engines/packages/package_cache.h"
#include "engines/spreadsheets/workbook.h"

namespace tarvik {

OoxmlSpreadsheets::OoxmlSpreadsheets(Files& files, Printer& printer, FormulaServices services)
    : files_(files), printer_(printer), services_(std::move(services)),
      cache_(std::make_shared<ooxml::PackageCache>(files))
{
}

OoxmlSpreadsheets::~OoxmlSpreadsheets() = default;

std::unique_ptr<SpreadsheetApplication> OoxmlSpreadsheets::create()
{
    return std::make_unique<ooxml::HiddenApplication<SpreadsheetApplication, Workbook>>(
        [&files = files_, &printer = printer_, services = services_, cache = cache_](TextView path) {
            auto package = ooxml::naming_workbook(path, [&] { return cache->open(path); });
            return std::make_unique<ooxml::OoxmlWorkbook>(files, printer, path.str(), std::move(package), services);
        });
}

} // namespace tarvik

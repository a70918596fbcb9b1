#include "engines/spreadsheets/engine.h"

#include "engines/packages/package_application.h"
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
    return std::make_unique<ooxml::PackageApplication<SpreadsheetApplication, Workbook>>(
        U"工作簿", cache_,
        [&files = files_, &printer = printer_, services = services_](Text path,
                                                                     std::shared_ptr<const ooxml::Package> package) {
            return std::make_unique<ooxml::OoxmlWorkbook>(files, printer, std::move(path), std::move(package),
                                                          services);
        });
}

} // namespace tarvik

#include "engines/libreoffice/engine.h"

#include "engines/packages/file_kind.h"

namespace tarvik {

LibreOfficeEngines::LibreOfficeEngines(libreoffice::LibreOffice& office, Files& files, Printer& printer,
                                       FormulaServices services)
    : around_{office, files, printer, std::move(services), std::make_shared<ooxml::PackageCache>(files)}
{
}

std::unique_ptr<SpreadsheetApplication> LibreOfficeEngines::create_spreadsheet()
{
    return std::make_unique<ooxml::HiddenApplication<SpreadsheetApplication, Workbook>>(
        [around = around_](TextView path) { return libreoffice::open_workbook(around, path.str()); });
}

std::unique_ptr<DocumentApplication> LibreOfficeEngines::create_document()
{
    return std::make_unique<ooxml::HiddenApplication<DocumentApplication, TextDocument>>(
        [around = around_](TextView path) { return libreoffice::open_document(around, path); });
}

std::string libreoffice::recalculated(LibreOffice& office, std::string_view package)
{
    const ExchangeFolder folder(office.folder());
    auto file = office.open(folder.put(has_macros(package) ? "read.xlsm" : "read.xlsx", package));
    if (!file) throw ooxml::Damage(suite_title() + U" 不能将它作为工作簿打开。");
    file.call([&](OpenFile& opened) {
        opened.calculate_all();
        opened.store(folder.place("written.xlsx"), "Calc MS Excel 2007 XML");
    });
    file.close(); // a suite may hold open what it wrote
    return folder.take("written.xlsx");
}

} // namespace tarvik

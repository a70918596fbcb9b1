#include "engines/libreoffice/engine.h"

#include "engines/packages/file_kind.h"

namespace tarvik {

FileOpeners libreoffice_files(libreoffice::LibreOffice& office, Files& files, Printer& printer,
                              FormulaServices services)
{
    const libreoffice::Surroundings around{office, files, printer, std::move(services),
                                           std::make_shared<ooxml::PackageCache>(files)};
    return {[around](TextView path) { return libreoffice::open_workbook(around, path.str()); },
            [around](TextView path) { return libreoffice::open_document(around, path); }};
}

std::string libreoffice::converted(LibreOffice& office, std::string_view bytes, const Conversion& conversion)
{
    const ExchangeFolder folder(office.folder());
    auto file = office.open(folder.put("read" + conversion.from, bytes));
    if (!file) throw ooxml::Damage(suite_title() + U" 不能打开它。");
    const auto written = "written" + conversion.to;
    file.call([&](OpenFile& opened) {
        if (conversion.calculates) opened.calculate_all();
        opened.store(folder.place(written), conversion.filter);
    });
    file.close(); // a suite may hold open what it wrote
    return folder.take(written);
}

std::string libreoffice::recalculated(LibreOffice& office, std::string_view package)
{
    return converted(office, package,
                     {has_macros(package) ? ".xlsm" : ".xlsx", ".xlsx", "Calc MS Excel 2007 XML", true});
}

} // namespace tarvik

#include "engines/libreoffice/engine.h"

#include "engines/libreoffice/exchange_folder.h"
#include "engines/libreoffice/opened_files.h"
#include "engines/packages/damage.h"
#include "engines/packages/file_kind.h"

namespace tarvik {

namespace {

/// An application whose files `open` opens, behind the interfaces of an application and its file.
template <typename Application, typename File>
class OfficeApplication final : public Application {
public:
    using Open = std::unique_ptr<File> (*)(libreoffice::LibreOffice& office, Files& files, Printer& printer, Text path);
    OfficeApplication(Open opening, libreoffice::LibreOffice& office, Files& files, Printer& printer)
        : open_(opening), office_(office), files_(files), printer_(printer)
    {
    }

    void set_visible(bool /*visible*/) override {} // the suite stays hidden

    File& open(TextView path) override
    {
        opened_.push_back(open_(office_, files_, printer_, path.str()));
        return *opened_.back();
    }

    void quit() override { opened_.clear(); }

private:
    Open open_;
    libreoffice::LibreOffice& office_;
    Files& files_;
    Printer& printer_;
    std::vector<std::unique_ptr<File>> opened_;
};

} // namespace

std::unique_ptr<SpreadsheetApplication> LibreOfficeEngines::create_spreadsheet()
{
    return std::make_unique<OfficeApplication<SpreadsheetApplication, Workbook>>(libreoffice::open_workbook, office_,
                                                                                 files_, printer_);
}

std::unique_ptr<DocumentApplication> LibreOfficeEngines::create_document()
{
    return std::make_unique<OfficeApplication<DocumentApplication, TextDocument>>(libreoffice::open_document, office_,
                                                                                  files_, printer_);
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

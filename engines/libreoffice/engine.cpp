#include "engines/libreoffice/engine.h"

#include "engines/libreoffice/document.h"
#include "engines/libreoffice/workbook.h"
#include "engines/packages/damage.h"
#include "engines/packages/file_kind.h"

namespace tarvik {

namespace {

/// An application whose files are of type `Opened`, behind the interfaces of an application and its file.
template <typename Application, typename File, typename Opened>
class OfficeApplication final : public Application {
public:
    OfficeApplication(libreoffice::LibreOffice& office, Files& files, Printer& printer)
        : office_(office), files_(files), printer_(printer)
    {
    }

    void set_visible(bool /*visible*/) override {} // the suite stays hidden

    File& open(TextView path) override
    {
        opened_.push_back(std::make_unique<Opened>(office_, files_, printer_, path.str()));
        return *opened_.back();
    }

    void quit() override { opened_.clear(); }

private:
    libreoffice::LibreOffice& office_;
    Files& files_;
    Printer& printer_;
    std::vector<std::unique_ptr<Opened>> opened_;
};

} // namespace

std::unique_ptr<SpreadsheetApplication> LibreOfficeEngines::create_spreadsheet()
{
    return std::make_unique<OfficeApplication<SpreadsheetApplication, Workbook, libreoffice::OfficeWorkbook>>(
        office_, files_, printer_);
}

std::unique_ptr<DocumentApplication> LibreOfficeEngines::create_document()
{
    return std::make_unique<OfficeApplication<DocumentApplication, TextDocument, libreoffice::OfficeDocument>>(
        office_, files_, printer_);
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

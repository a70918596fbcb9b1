#include "office/spreadsheets/engine.h"

#include "office/packages/package_cache.h"
#include "office/spreadsheets/workbook.h"

#include <vector>

namespace tarvik {

namespace {

class OoxmlSpreadsheet final : public SpreadsheetApplication {
public:
    OoxmlSpreadsheet(Files& files, Printer& printer, std::shared_ptr<ooxml::PackageCache> cache)
        : files_(files), printer_(printer), cache_(std::move(cache))
    {
    }

    void set_visible(bool /*visible*/) override {} // there is no window to show

    Workbook& open(TextView path) override
    {
        auto package = ooxml::naming_workbook(path, [&] { return cache_->open(path); });
        workbooks_.push_back(std::make_unique<ooxml::OoxmlWorkbook>(files_, printer_, path.str(), std::move(package)));
        return *workbooks_.back();
    }

    void quit() override { workbooks_.clear(); }

private:
    Files& files_;
    Printer& printer_;
    std::shared_ptr<ooxml::PackageCache> cache_;
    std::vector<std::unique_ptr<Workbook>> workbooks_;
};

} // namespace

OoxmlSpreadsheets::OoxmlSpreadsheets(Files& files, Printer& printer)
    : files_(files), printer_(printer), cache_(std::make_shared<ooxml::PackageCache>(files))
{
}

OoxmlSpreadsheets::~OoxmlSpreadsheets() = default;

std::unique_ptr<SpreadsheetApplication> OoxmlSpreadsheets::create()
{
    return std::make_unique<OoxmlSpreadsheet>(files_, printer_, cache_);
}

} // namespace tarvik

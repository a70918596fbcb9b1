#include "engines/spreadsheets/engine.h"

#include "engines/packages/package.h"
#include "engines/packages/temporary_folder.h"
#include "engines/spreadsheets/sheet_look.h"
#include "engines/spreadsheets/workbook_model.h"
#include "platform/failure.h"
#include "platform/files/paths.h"

#include <map>

namespace tarvik {

namespace ooxml {

namespace {

class OoxmlWorkbook final : public Workbook {
public:
    OoxmlWorkbook(Files& files, Printer& printer, Text path, std::shared_ptr<const Package> package,
                  FormulaServices services, std::unique_ptr<ForeignWorkbook> foreign, std::u32string_view extension)
        : files_(files), printer_(printer), path_(std::move(path)),
          model_(naming_workbook(
              path_, [&] { return std::make_unique<WorkbookModel>(std::move(package), std::move(services)); })),
          foreign_(std::move(foreign)), extension_(extension)
    {
        if (foreign_) model_->record_changes();
    }

    int worksheet_count() const override { return model().sheet_count(); }
    Worksheet& worksheet(int index) override;
    void save_as(TextView path) override;
    void close(bool save_changes) override;

private:
    class Sheet;

    WorkbookModel& model() const;
    std::string bytes(std::u32string_view extension) const;
    void print();

    Files& files_;
    Printer& printer_;
    Text path_;
    std::unique_ptr<WorkbookModel> model_; // none once the workbook is closed
    std::unique_ptr<ForeignWorkbook> foreign_;
    std::u32string_view extension_;
    std::map<int, std::unique_ptr<Sheet>> sheets_;
    bool is_saved_ = true; // the file holds what the model does
};

class OoxmlWorkbook::Sheet final : public Worksheet, public PicturedSheet {
    template <typename Work>
    decltype(auto) naming(Work&& work) const
    {
        return naming_workbook(workbook_.path_, std::forward<Work>(work));
    }
    template <typename Answer>
    Answer of_cell(Answer (SheetPart::*asked)(Place) const, int row, int column) const
    {
        return naming([&] { return (part_.*asked)({row, column}); });
    }

public:
    Sheet(OoxmlWorkbook& workbook, SheetPart& part) : workbook_(workbook), part_(part) {}

    Text cell(int row, int column) const override { return of_cell(&SheetPart::text, row, column); }
    CellValue value(int row, int column) const override { return of_cell(&SheetPart::held, row, column); }
    bool is_empty(int row, int column) const override { return of_cell(&SheetPart::is_empty, row, column); }
    bool is_date(int row, int column) const override { return of_cell(&SheetPart::is_date, row, column); }

    void set_cell(int row, int column, const CellValue& value) override
    {
        if (naming([&] { return part_.write({row, column}, value); })) workbook_.is_saved_ = false;
    }

    int clear(int first_row, int last_row, int first_column, int last_column) override
    {
        const Range range{{first_row, first_column}, {last_row, last_column}};
        const int count = naming([&] { return part_.clear(range); });
        if (count > 0) workbook_.is_saved_ = false;
        return count;
    }

    void print_out() override { workbook_.print(); }

    SheetPicture picture(int rows, int columns) const override
    {
        return naming([&] { return sheet_look(part_.part().root(), workbook_.model().original(), rows, columns); });
    }

private:
    OoxmlWorkbook& workbook_;
    SheetPart& part_;
};

WorkbookModel& OoxmlWorkbook::model() const
{
    if (!model_) throw Failure(U"工作簿“" + path_ + U"”已经关闭。");
    return *model_;
}

Worksheet& OoxmlWorkbook::worksheet(int index)
{
    auto& part = naming_workbook(path_, [&]() -> SheetPart& { return model().sheet(index); });
    auto& sheet = sheets_[index];
    if (sheet) return *sheet;
    if (foreign_) naming_workbook(path_, [&] { foreign_->take(model().position(index)); });
    sheet = std::make_unique<Sheet>(*this, part);
    return *sheet;
}

std::string OoxmlWorkbook::bytes(std::u32string_view extension) const
{
    constexpr Place last_of_xls{65'536, 256};
    return naming_workbook(path_, [&]() -> std::string {
        if (extension == U".xls" && !model().fits(last_of_xls))
            throw Damage(U".xls 格式只有 65536 行、256 列，放不下工作表的内容。");
        if (extension == U".xlsx" || extension == U".xlsm")
            model().set_format(extension == U".xlsm" ? WorkbookFormat::WithMacros : WorkbookFormat::Plain);
        return foreign_ ? foreign_->stored(model(), extension) : model().pack();
    });
}

void OoxmlWorkbook::save_as(TextView path)
{
    Text target = path.str();
    auto extension = workbook_extension(path);
    if (extension.empty()) target += extension = U".xlsx";
    if (extension == U".xls" && !foreign_)
        throw Failure(U"无法保存工作簿“" + path.str() + U"”：内置引擎只能保存 .xlsx 和 .xlsm 格式。");
    files_.replace(target, bytes(extension));
    path_ = std::move(target);
    extension_ = extension;
    is_saved_ = true;
}

void OoxmlWorkbook::close(bool save_changes)
{
    if (save_changes && !is_saved_) files_.replace(path_, bytes(extension_));
    sheets_.clear();
    model_.reset();
    foreign_.reset();
}

void OoxmlWorkbook::print()
{
    const auto name = split_path(path_).name;
    if (is_saved_) return printer_.print(files_.resolve(path_), name);
    print_copy(files_, printer_, name, bytes(extension_));
}

} // namespace

std::u32string_view workbook_extension(TextView path)
{
    const auto name = lower(path);
    for (const std::u32string_view extension : {U".xlsx", U".xlsm", U".xls"})
        if (name.ends_with(extension)) return extension;
    return {};
}

std::unique_ptr<Workbook> open_workbook(Files& files, Printer& printer, Text path,
                                        std::shared_ptr<const Package> package, FormulaServices services,
                                        std::unique_ptr<ForeignWorkbook> foreign, std::u32string_view extension)
{
    return std::make_unique<OoxmlWorkbook>(files, printer, std::move(path), std::move(package), std::move(services),
                                           std::move(foreign), extension);
}

} // namespace ooxml

FileOpener<Workbook> ooxml_workbooks(Files& files, Printer& printer, FormulaServices services)
{
    return [&files, &printer, services = std::move(services),
            cache = std::make_shared<ooxml::PackageCache>(files)](TextView path) {
        auto package = ooxml::naming_workbook(path, [&] { return cache->open(path); });
        return ooxml::open_workbook(files, printer, path.str(), std::move(package), services);
    };
}

} // namespace tarvik

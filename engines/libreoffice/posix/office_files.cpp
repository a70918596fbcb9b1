#include "engines/documents/engine.h"
#include "engines/libreoffice/libreoffice.h"
#include "engines/packages/damage.h"
#include "engines/packages/file_kind.h"
#include "engines/spreadsheets/engine.h"
#include "engines/spreadsheets/workbook_model.h"

#include <algorithm>

namespace tarvik::libreoffice {

namespace {

struct FormatRow {
    std::u32string_view extension;
    const char* filter;
};
constexpr FormatRow formats[] = {
    {U".xlsx", "Calc MS Excel 2007 XML"}, {U".xlsm", "Calc MS Excel 2007 VBA XML"}, {U".xls", "MS Excel 97"}};

/// A workbook that LibreOffice holds open. It gets the changes when they are saved.
class OfficeWorkbook final : public ooxml::ForeignWorkbook {
public:
    OfficeWorkbook(std::unique_ptr<ExchangeFolder> folder, Handle<OpenWorkbook> file)
        : folder_(std::move(folder)), file_(std::move(file))
    {
    }

    // A write that LibreOffice refuses would show at the save only.
    void take(int position) override
    {
        const auto access = file_.call([position](OpenWorkbook& file) { return file.take(position); });
        if (access == Access::FileRefused) throw ooxml::Damage(U"工作簿设有修改密码，不能填写。");
        if (access == Access::SheetRefused) throw ooxml::Damage(U"工作表有密码保护，不能填写；请先撤销工作表保护。");
    }

    std::string stored(ooxml::WorkbookModel& model, std::u32string_view extension) override
    {
        const auto changes = model.changes();
        file_.call([&](OpenWorkbook& file) {
            for (const auto& [position, split, cells] : changes)
                if (const auto refused = file.write(position, split, cells))
                    throw std::runtime_error(to_utf8(U"第 " + number_text(refused->row) + U" 行、第 " +
                                                     number_text(refused->column) +
                                                     U" 列起的单元格不能改写，那里可能有数组公式"));
        });
        model.record_changes();
        return stored(extension);
    }

    std::string stored(std::u32string_view extension)
    {
        const auto* const format = std::ranges::find(formats, extension, &FormatRow::extension);
        file_.call([&](OpenWorkbook& file) { file.store(folder_->place("written"), format->filter); });
        return folder_->take("written");
    }

private:
    std::unique_ptr<ExchangeFolder> folder_;
    Handle<OpenWorkbook> file_;
};

/// A document that LibreOffice holds open. An older binary one is stored in the newest of these formats.
class OfficeDocument final : public ooxml::FilledDocument {
public:
    OfficeDocument(LibreOffice& office, std::string_view bytes)
        : is_package_(require_kind(bytes, FileKind::Document) == FileKind::Package), folder_(office.folder()),
          file_(office.open<OpenDocument>(folder_.put(is_package_ ? "read.docx" : "read.doc", bytes)))
    {
        if (!file_) throw ooxml::Damage(suite_title() + U" 不能将它作为文档打开。");
    }

    void set_cell_text(int row, int column, TextView text) override
    {
        work_on_cell(row, column,
                     [&](OpenDocument& document) { return document.set_cell_text(row, column, text.str()); });
    }

    void add_picture(int row, int column, ooxml::PictureFile picture, TextView /*name*/) override
    {
        constexpr double inch = 2540;
        const auto copy = folder_.put("picture" + std::to_string(++pictures_), picture.contents);
        const Size size{picture.picture.width * inch, picture.picture.height * inch};
        work_on_cell(row, column,
                     [&](OpenDocument& document) { return document.add_picture(row, column, copy, size); });
    }

    std::string pack() override
    {
        file_.call([&](OpenDocument& document) {
            document.store(folder_.place("written"), is_package_ ? "MS Word 2007 XML" : "MS Word 97");
        });
        return folder_.take("written");
    }

private:
    /// `work` gives whether the cell is there.
    void work_on_cell(int row, int column, const std::function<bool(OpenDocument&)>& work)
    {
        file_.call([&](OpenDocument& document) {
            if (!document.has_table()) throw ooxml::Damage(U"文档中没有表格。");
            if (!work(document))
                throw ooxml::Damage(U"第一个表格没有第 " + number_text(row) + U" 行、第 " + number_text(column) +
                                    U" 列的单元格。");
        });
    }

    bool is_package_;
    ExchangeFolder folder_;
    Handle<OpenDocument> file_;
    int pictures_ = 0;
};

} // namespace

// Older binary formats become the one that LibreOffice writes.
std::unique_ptr<Workbook> open_workbook(const Surroundings& around, Text path)
{
    std::shared_ptr<const ooxml::Package> package;
    std::unique_ptr<OfficeWorkbook> opened;
    std::u32string_view extension = U".xls";
    ooxml::naming_workbook(path, [&] {
        auto bytes = around.files.read(path);
        const auto kind = require_kind(bytes, FileKind::Workbook);
        const bool is_package = kind == FileKind::Package;
        remove_read_only_advice(bytes);
        auto folder = std::make_unique<ExchangeFolder>(around.office.folder());
        auto file = around.office.open<OpenWorkbook>(folder->put(is_package ? "read.xlsx" : "read.xls", bytes));
        if (!file)
            throw ooxml::Damage(kind == FileKind::Encrypted ? Text(locked_reason)
                                                            : suite_title() + U" 不能将它作为工作簿打开。");
        if (is_package) extension = has_macros(bytes) ? U".xlsm" : U".xlsx";
        // Of a file behind a password nothing but its name says the format.
        const auto named = ooxml::workbook_extension(path);
        if (kind == FileKind::Encrypted && !named.empty()) extension = named;
        opened = std::make_unique<OfficeWorkbook>(std::move(folder), std::move(file));
        package = around.packages->open(path, [&] { return is_package ? bytes : opened->stored(U".xlsx"); });
    });
    return ooxml::open_workbook(around.files, around.printer, std::move(path), std::move(package), around.services,
                                std::move(opened), extension);
}

std::unique_ptr<TextDocument> open_document(const Surroundings& around, TextView path)
{
    return ooxml::open_document(around.files, around.printer, path, [&] {
        return std::make_unique<OfficeDocument>(around.office, around.files.read(path));
    });
}

} // namespace tarvik::libreoffice

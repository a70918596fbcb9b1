#include "engines/libreoffice/exchange_folder.h"
#include "engines/libreoffice/opened_files.h"
#include "engines/libreoffice/sheet_cells.h"
#include "engines/packages/damage.h"
#include "engines/packages/file_kind.h"
#include "platform/files/file_name.h"

#include <algorithm>

namespace tarvik::libreoffice {

namespace {

struct WorkbookFormat {
    std::u32string_view extension;
    std::string_view filter;
    int rows, columns;
};

constexpr WorkbookFormat formats[] = {
    {U".xlsx", "Calc MS Excel 2007 XML", 1'048'576, 16'384},
    {U".xlsm", "Calc MS Excel 2007 VBA XML", 1'048'576, 16'384},
    {U".xls", "MS Excel 97", 65'536, 256},
};
constexpr const WorkbookFormat& plain_format = formats[0];
constexpr const WorkbookFormat& binary_format = formats[2];

const WorkbookFormat* format_with_extension(TextView path)
{
    const auto name = split_path(path).name;
    const auto point = name.rfind(U'.');
    const auto extension = point == npos ? Text() : lower(name.substr(point));
    const auto found = std::ranges::find_if(
        formats, [&](const WorkbookFormat& format) { return TextView(format.extension) == extension; });
    return found == std::end(formats) ? nullptr : found;
}

/// The format that a file is kept in; older binary ones become the one that LibreOffice writes.
const WorkbookFormat& format_with_filter(std::string_view filter)
{
    const auto found =
        std::ranges::find_if(formats, [&](const WorkbookFormat& format) { return format.filter == filter; });
    return found == std::end(formats) ? binary_format : *found;
}

template <typename Work>
decltype(auto) naming_workbook(TextView path, Work&& work)
{
    return ooxml::naming_file(U"工作簿", path, std::forward<Work>(work));
}

/// A workbook that LibreOffice holds open. Failures name the file.
class OfficeWorkbook final : public Workbook {
public:
    OfficeWorkbook(LibreOffice& office, Files& files, Printer& printer, Text path);
    ~OfficeWorkbook() override;

    int worksheet_count() const override { return sheet_count_; }
    Worksheet& worksheet(int index) override;
    void save_as(TextView path) override;
    void close(bool save_changes) override;

private:
    class Sheet;

    void open(LibreOffice& office);
    Handle<OpenWorkbook>& file();
    void require_writable(int sheet);
    void send();
    void check_limits(const WorkbookFormat& format);
    std::string stored(const WorkbookFormat& format);
    void store(const Text& path, const WorkbookFormat& format);
    void print();

    Files& files_;
    Printer& printer_;
    Text path_;
    std::optional<ExchangeFolder> folder_;
    std::optional<Handle<OpenWorkbook>> file_; ///< none once the workbook is closed
    const WorkbookFormat* format_ = nullptr;
    int sheet_count_ = 0;
    SheetWrites writes_{[this] { send(); }};
    std::map<int, std::unique_ptr<Sheet>> sheets_;
    bool is_saved_ = true; ///< the file holds what LibreOffice does
};

class OfficeWorkbook::Sheet final : public Worksheet {
    template <typename Work>
    decltype(auto) naming(Work&& work) const
    {
        workbook_.file();
        return naming_workbook(workbook_.path_, std::forward<Work>(work));
    }

public:
    Sheet(OfficeWorkbook& workbook, int index) : workbook_(workbook), cells_(workbook.file(), index, workbook.writes_)
    {
    }

    Text cell(int row, int column) const override
    {
        return naming([&] { return cells_.text({row, column}); });
    }

    CellValue value(int row, int column) const override
    {
        return naming([&] { return cells_.value({row, column}); });
    }

    bool is_empty(int row, int column) const override
    {
        return naming([&] { return cells_.is_empty({row, column}); });
    }

    bool is_date(int row, int column) const override
    {
        return naming([&] { return cells_.is_date({row, column}); });
    }

    void set_cell(int row, int column, const CellValue& value) override
    {
        naming([&] { cells_.write({row, column}, value); });
    }

    int clear(int first_row, int last_row, int first_column, int last_column) override
    {
        return naming([&] { return cells_.clear({first_row, first_column, last_row, last_column}); });
    }

    void print_out() override { workbook_.print(); }

    SheetCells& cells() { return cells_; }

private:
    OfficeWorkbook& workbook_;
    mutable SheetCells cells_; // reading asks LibreOffice when it first needs to
};

OfficeWorkbook::OfficeWorkbook(LibreOffice& office, Files& files, Printer& printer, Text path)
    : files_(files), printer_(printer), path_(std::move(path))
{
    naming_workbook(path_, [&] { open(office); });
}

OfficeWorkbook::~OfficeWorkbook() = default;

void OfficeWorkbook::open(LibreOffice& office)
{
    auto bytes = files_.read(path_);
    const auto kind = require_kind(bytes, FileKind::Workbook);
    remove_read_only_advice(bytes);
    folder_.emplace(office.folder());
    auto file = office.open_workbook(folder_->put(kind == FileKind::Package ? "read.xlsx" : "read.xls", bytes));
    if (!file && kind == FileKind::Encrypted) throw ooxml::Damage(Text(locked_reason));
    if (!file) throw ooxml::Damage(suite_title() + U" 不能将它作为工作簿打开。");
    const auto filter = file.call([](OpenWorkbook& opened) { return opened.filter(); });
    // What LibreOffice makes nothing of is a text to it.
    if (filter.starts_with("Text"))
        throw ooxml::Damage(kind == FileKind::Encrypted ? Text(locked_reason)
                                                        : suite_title() + U" 不能将它作为工作簿打开。");
    format_ = &format_with_filter(filter);
    sheet_count_ = file.call([](OpenWorkbook& opened) { return opened.sheet_count(); });
    file_.emplace(std::move(file));
}

Handle<OpenWorkbook>& OfficeWorkbook::file()
{
    if (!file_) throw Failure(U"工作簿“" + path_ + U"”已经关闭。");
    return *file_;
}

Worksheet& OfficeWorkbook::worksheet(int index)
{
    file();
    if (index < 1 || index > sheet_count_)
        naming_workbook(path_, [&] { throw ooxml::Damage(U"没有第 " + number_text(index) + U" 张工作表。"); });
    auto& sheet = sheets_[index];
    if (!sheet) naming_workbook(path_, [&] { require_writable(index); });
    if (!sheet) sheet = std::make_unique<Sheet>(*this, index);
    return *sheet;
}

// A write that LibreOffice refuses would show at the save only.
void OfficeWorkbook::require_writable(int sheet)
{
    const auto refusal = file().call([&](OpenWorkbook& opened) -> std::u32string_view {
        if (opened.is_read_only()) return U"工作簿设有修改密码，不能填写。";
        return opened.lift_protection(sheet) ? U"" : U"工作表有密码保护，不能填写；请先撤销工作表保护。";
    });
    if (!refusal.empty()) throw ooxml::Damage(Text(refusal));
}

void OfficeWorkbook::send()
{
    for (auto& [index, sheet] : sheets_)
        if (sheet->cells().send()) is_saved_ = false;
    writes_.sent = writes_.count;
}

// LibreOffice leaves out without a word what the format has no place for.
void OfficeWorkbook::check_limits(const WorkbookFormat& format)
{
    if (&format != &binary_format) return;
    const bool all_may_be_large = format_ != &binary_format;
    for (int index = 1; index <= sheet_count_; ++index) {
        if (!all_may_be_large && !sheets_.contains(index)) continue;
        worksheet(index);
        if (!sheets_.at(index)->cells().fits(format.rows, format.columns))
            throw ooxml::Damage(U".xls 格式只有 65536 行、256 列，放不下工作表的内容。");
    }
}

std::string OfficeWorkbook::stored(const WorkbookFormat& format)
{
    check_limits(format);
    const auto copy = folder_->place("written");
    file().call([&](OpenWorkbook& opened) { opened.store(copy, std::string(format.filter)); });
    return folder_->take("written");
}

void OfficeWorkbook::store(const Text& path, const WorkbookFormat& format)
{
    const auto bytes = naming_workbook(path_, [&] { return stored(format); });
    files_.replace(path, bytes);
    is_saved_ = true;
}

void OfficeWorkbook::save_as(TextView path)
{
    file();
    naming_workbook(path_, [&] { send(); });
    const auto* format = format_with_extension(path);
    Text target = path.str();
    if (!format) {
        target += plain_format.extension;
        format = &plain_format;
    }
    store(target, *format);
    path_ = std::move(target);
    format_ = format;
}

void OfficeWorkbook::close(bool save_changes)
{
    if (save_changes && file_) {
        naming_workbook(path_, [&] { send(); });
        if (!is_saved_) store(path_, *format_);
    }
    sheets_.clear();
    file_.reset();
    folder_.reset();
}

void OfficeWorkbook::print()
{
    file();
    const auto name = split_path(path_).name;
    const ExchangeFolder folder(folder_->place("printed"));
    const auto copy = naming_workbook(path_, [&] {
        send();
        return folder.put(to_utf8(name), stored(*format_));
    });
    printer_.print(copy, name);
}

} // namespace

std::unique_ptr<Workbook> open_workbook(LibreOffice& office, Files& files, Printer& printer, Text path)
{
    return std::make_unique<OfficeWorkbook>(office, files, printer, std::move(path));
}

} // namespace tarvik::libreoffice

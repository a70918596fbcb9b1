#include "engines/libreoffice/engine.h"
#include "engines/packages/file_kind.h"
#include "engines/spreadsheets/engine.h"
#include "engines/spreadsheets/workbook_model.h"

#include <algorithm>

namespace tarvik::libreoffice {

namespace {

using ooxml::Place, ooxml::Range;

struct FormatRow {
    std::u32string_view extension;
    const char* filter;
};
constexpr FormatRow formats[] = {
    {U".xlsx", "Calc MS Excel 2007 XML"}, {U".xlsm", "Calc MS Excel 2007 VBA XML"}, {U".xls", "MS Excel 97"}};

using Cells = std::vector<std::pair<Place, CellValue>>;

/// The cells, which come row by row, in as few rectangles as runs along a row and equal runs of rows that follow each
/// other make.
std::vector<Block> blocks_of(const Cells& cells)
{
    std::vector<Block> blocks;
    std::map<std::pair<int, int>, std::size_t> last_with_columns; // the lowest rectangle of these columns
    for (auto start = cells.begin(), end = start; start != cells.end(); start = end) {
        const auto [row, column] = start->first;
        std::vector<CellValue> values;
        for (; end != cells.end() && end->first == Place{row, column + static_cast<int>(values.size())}; ++end)
            values.push_back(end->second);
        const int last_column = column + static_cast<int>(values.size()) - 1;
        auto& index = last_with_columns.try_emplace({column, last_column}, blocks.size()).first->second;
        if (index == blocks.size() || blocks[index].area.last.row != row - 1) {
            index = blocks.size();
            blocks.push_back({{{row, column}, {row, last_column}}, std::move(values)});
            continue;
        }
        blocks[index].area.last.row = row;
        blocks[index].values.insert(blocks[index].values.end(), values.begin(), values.end());
    }
    return blocks;
}

void write(OpenWorkbook& file, const ooxml::SheetChanges& changes)
{
    const auto notes = file.notes(changes.position);
    const auto has_note = [&notes](const auto& cell) {
        return std::ranges::any_of(notes, [&](const Range& area) { return area.contains(cell.first); });
    };
    auto together = changes.cells;
    const auto alone = std::stable_partition(together.begin(), together.end(), std::not_fn(has_note));
    for (const auto& area : changes.split) file.split_merged(changes.position, area);
    const auto require = [](bool is_written, Place at) {
        if (!is_written)
            throw std::runtime_error(to_utf8(U"第 " + number_text(at.row) + U" 行、第 " + number_text(at.column) +
                                             U" 列起的单元格不能改写，那里可能有数组公式"));
    };
    std::for_each(alone, together.end(), [&](const auto& cell) {
        require(file.write_cell(changes.position, cell.first, cell.second), cell.first);
    });
    together.erase(alone, together.end());
    for (const auto& block : blocks_of(together)) require(file.write(changes.position, block), block.area.first);
}

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
        const auto refusal = file_.call([&](OpenWorkbook& file) -> std::u32string_view {
            if (file.is_read_only()) return U"工作簿设有修改密码，不能填写。";
            return file.lift_protection(position) ? U"" : U"工作表有密码保护，不能填写；请先撤销工作表保护。";
        });
        if (!refusal.empty()) throw ooxml::Damage(Text(refusal));
    }

    std::string stored(ooxml::WorkbookModel& model, std::u32string_view extension) override
    {
        const auto changes = model.changes();
        file_.call([&](OpenWorkbook& file) {
            for (const auto& of_sheet : changes) write(file, of_sheet);
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

} // namespace tarvik::libreoffice

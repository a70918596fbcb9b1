#include "engines/suite/held_file.h"

#include <algorithm>

namespace tarvik::windows {

using libreoffice::Area;
using libreoffice::Block;
using libreoffice::HeldCell;
using libreoffice::MergedArea;
using libreoffice::OpenWorkbook;
using libreoffice::SheetContent;

const ApplicationKind workbooks{L"Excel.Application", L"EXCEL.EXE", U"Excel", 0, {}};

namespace {

constexpr FormatRow formats[] = {
    {"MS Excel 97", 56, L".xls"},
    {"Calc MS Excel 2007 XML", 51, L".xlsx"},
    {"Calc MS Excel 2007 VBA XML", 52, L".xlsm"},
};
constexpr std::size_t longest_in_table = 900; // characters; the suite takes no longer text as a part of a table
constexpr int most_cells_at_once = 100'000;

struct ErrorText {
    int number;
    const char32_t* text;
};
constexpr ErrorText error_texts[] = {
    {2000, U"#NULL!"}, {2007, U"#DIV/0!"}, {2015, U"#VALUE!"}, {2023, U"#REF!"},
    {2029, U"#NAME?"}, {2036, U"#NUM!"},   {2042, U"#N/A"},
};

Text error_text(SCODE code)
{
    const int number = static_cast<int>(static_cast<std::uint32_t>(code) & 0xffffU);
    for (const auto& error : error_texts)
        if (error.number == number) return error.text;
    return U"#VALUE!";
}

CellValue to_cell(const ComValue& value)
{
    const VARIANT& raw = value.raw();
    if (raw.vt == VT_BSTR) return from_wide(raw.bstrVal, ::SysStringLen(raw.bstrVal));
    if (raw.vt == VT_BOOL) return Text(raw.boolVal ? U"True" : U"False");
    if (raw.vt == VT_ERROR) return error_text(raw.scode);
    return value.as_number();
}

/// A text behind an apostrophe stays a text, whatever the suite would make of it.
ComValue from_cell(const CellValue& value)
{
    if (const auto* number = std::get_if<double>(&value)) return {*number};
    const auto& text = std::get<Text>(value);
    return text.empty() ? ComValue() : ComValue(TextView(U"'" + text));
}

Text cell_name(int row, int column)
{
    Text letters;
    for (int left = column; left > 0; left = (left - 1) / 26)
        letters.insert(letters.begin(), static_cast<char32_t>(U'A' + (left - 1) % 26));
    return letters + number_text(row);
}

Text area_name(const Area& area)
{
    return cell_name(area.first_row, area.first_column) + U":" + cell_name(area.last_row, area.last_column);
}

Area area_of(const ComObject& range)
{
    Area area;
    area.first_row = range.get(L"Row").as_count();
    area.first_column = range.get(L"Column").as_count();
    area.last_row = area.first_row + range.object(L"Rows").get(L"Count").as_count() - 1;
    area.last_column = area.first_column + range.object(L"Columns").get(L"Count").as_count() - 1;
    return area;
}

class HeldWorkbook final : public HeldFile<OpenWorkbook> {
public:
    HeldWorkbook(std::shared_ptr<Application> application, ComObject file)
        : HeldFile(std::move(application), std::move(file), formats, L"FileFormat")
    {
    }

    libreoffice::Printing print(const std::string& /*printer*/) override
    {
        sheet_at(1).call(L"PrintOut");
        return libreoffice::Printing::Done;
    }
    int sheet_count() override { return file().object(L"Worksheets").get(L"Count").as_count(); }
    bool is_logical(int /*sheet*/, int /*row*/, int /*column*/) override { return false; } // read as a text

    SheetContent read(int sheet) override
    {
        const auto cells = sheet_at(sheet);
        const Area used = area_of(cells.object(L"UsedRange"));
        const int rows_at_once = std::max(1, most_cells_at_once / used.columns());
        SheetContent content;
        for (Area part = used; part.first_row <= used.last_row; part.first_row = part.last_row + 1) {
            part.last_row = std::min(used.last_row, part.first_row + rows_at_once - 1);
            int place = 0;
            for (const auto& value : range(cells, part).get(L"Value2").cells()) {
                const int row = part.first_row + place / part.columns();
                const int column = part.first_column + place++ % part.columns();
                if (value.raw().vt != VT_EMPTY) content.cells.push_back({{row, column}, to_cell(value), false});
            }
        }
        return content;
    }

    MergedArea merged_around(int sheet, const Area& area) override
    {
        const auto cells = range(sheet_at(sheet), area);
        const ComValue merged = cells.get(L"MergeCells");
        if (merged.raw().vt == VT_BOOL && !merged.raw().boolVal) return {area, false};
        if (area.cells() > 1) return {area, true};
        return {area_of(cells.object(L"MergeArea")), true};
    }

    void write(int sheet, const Block& block) override
    {
        const auto cells = sheet_at(sheet);
        std::vector<ComValue> values;
        std::vector<std::size_t> alone;
        for (const auto& value : block.values) {
            const auto* const text = std::get_if<Text>(&value);
            const bool is_long = text && text->size() > longest_in_table;
            if (is_long) alone.push_back(values.size());
            values.push_back(is_long ? ComValue() : from_cell(value));
        }
        range(cells, block.area).put(L"Value2", {values, block.area.rows(), block.area.columns()});
        const auto columns = static_cast<std::size_t>(block.area.columns());
        for (const std::size_t place : alone)
            write_cell(sheet, block.area.first_row + static_cast<int>(place / columns),
                       block.area.first_column + static_cast<int>(place % columns), block.values[place]);
    }

    void calculate_all() override { file().object(L"Application").call(L"CalculateFull"); }

    void write_cell(int sheet, int row, int column, const CellValue& value) override
    {
        range(sheet_at(sheet), {row, column, row, column}).put(L"Value2", from_cell(value));
    }

private:
    ComObject sheet_at(int index) const { return file().object(L"Worksheets").object(L"Item", {index}); }
    static ComObject range(const ComObject& sheet, const Area& area)
    {
        return sheet.object(L"Range", {TextView(area_name(area))});
    }
};

} // namespace

std::unique_ptr<OpenWorkbook> open_workbook(std::shared_ptr<Application> application, const std::filesystem::path& path)
{
    constexpr int no_links = 0;
    const auto missing = ComValue::missing();
    auto file = application->object()
                    .object(L"Workbooks")
                    .object(L"Open", {ComValue(path), no_links, false, missing, U"", U"", true});
    return std::make_unique<HeldWorkbook>(std::move(application), std::move(file));
}

} // namespace tarvik::windows

#include "engines/libreoffice/bridge.h"
#include "engines/packages/package.h"
#include "engines/spreadsheets/engine.h"
#include "platform/files/disk_files.h"
#include "platform/files/path_text.h"
#include "tests/engines/spreadsheets/workbook_parts.h"
#include "tests/engines/suite/stand_in/applications.h"

#include <algorithm>
#include <fstream>
#include <memory>
#include <optional>
#include <utility>

namespace tarvik::test {

namespace {

using libreoffice::Area;

constexpr HRESULT refused = static_cast<HRESULT>(0x800a03ec);
constexpr Area looked_at{1, 1, 1'100, 12}; // as far as the workbooks of the tests reach
constexpr std::size_t longest_in_table = 911;
constexpr int package_format = 51, binary_format = 56;

struct ErrorText {
    std::u32string_view text;
    int number;
};
constexpr ErrorText error_texts[] = {{U"#DIV/0!", 2007}, {U"#VALUE!", 2015}, {U"#N/A", 2042}};

/// "B2:C9", or a single cell.
Area area_named(const std::string& name)
{
    Area area{0, 0, 0, 0};
    for (const char letter : name) {
        if (letter == ':') {
            area.first_row = std::exchange(area.last_row, 0);
            area.first_column = std::exchange(area.last_column, 0);
        } else if (letter >= 'A') {
            area.last_column = area.last_column * 26 + (letter - 'A' + 1);
        } else {
            area.last_row = area.last_row * 10 + (letter - '0');
        }
    }
    if (area.first_row == 0) area.first_row = area.last_row;
    if (area.first_column == 0) area.first_column = area.last_column;
    return area;
}

class NoPrinter final : public Printer {
    void print(const std::filesystem::path&, TextView) override {}
};

/// A workbook as the embedded engine holds it, with the rules of the suite for what is written into a cell.
struct Book {
    Book(Server& told, std::filesystem::path path) : server(told), file(std::move(path))
    {
        auto bytes = bytes_of(file);
        if (!bytes.starts_with("PK")) {
            format = binary_format;
            bytes = make_package(simple_parts(""));
            std::ofstream(file, std::ios::binary) << bytes;
        }
        package = std::make_unique<ooxml::Package>(std::move(bytes));
        opened = &application->open(text_of(file));
    }

    std::vector<Area> merged(int sheet) const
    {
        std::vector<Area> areas;
        const auto& part = package->part("xl/worksheets/sheet" + std::to_string(sheet) + ".xml");
        const std::string before = "mergeCell ref=\"";
        for (auto at = part.find(before); at != std::string::npos; at = part.find(before, at)) {
            at += before.size();
            areas.push_back(area_named(part.substr(at, part.find('"', at) - at)));
        }
        return areas;
    }

    Server& server;
    std::filesystem::path file;
    int format = package_format;
    DiskFiles files{file.parent_path()};
    NoPrinter printer;
    OoxmlSpreadsheets engine{files, printer};
    std::unique_ptr<SpreadsheetApplication> application = engine.create();
    std::unique_ptr<ooxml::Package> package;
    Workbook* opened = nullptr;
};
using HeldBook = std::shared_ptr<Book>;

struct Range {
    HeldBook book;
    int sheet;
    Area area;

    ComValue value(int row, int column) const
    {
        auto& cells = book->opened->worksheet(sheet);
        const auto held = cells.value(row, column);
        if (const auto* number = std::get_if<double>(&held)) return {*number};
        const auto& text = std::get<Text>(held);
        if (text.empty() && cells.is_empty(row, column)) return {};
        if (text == U"True" || text == U"False") return {text == U"True"};
        for (const auto& error : error_texts)
            if (error.text == text) {
                ComValue made;
                made.raw().vt = VT_ERROR;
                made.raw().scode = static_cast<SCODE>(0x800a0000U + static_cast<unsigned>(error.number));
                return made;
            }
        return {TextView(text)};
    }

    ComValue values() const
    {
        if (area.cells() == 1) return value(area.first_row, area.first_column);
        std::vector<ComValue> made;
        for (int row = area.first_row; row <= area.last_row; ++row)
            for (int column = area.first_column; column <= area.last_column; ++column)
                made.push_back(value(row, column));
        return {made, area.rows(), area.columns()};
    }

    // A text without an apostrophe is taken as if it were typed.
    void put(int row, int column, const ComValue& value) const
    {
        for (const auto& merged : book->merged(sheet))
            if (merged.contains(row, column) && (row != merged.first_row || column != merged.first_column)) return;
        auto& cells = book->opened->worksheet(sheet);
        const VARIANT& raw = value.raw();
        if (raw.vt == VT_EMPTY) return cells.set_cell(row, column, Text());
        if (raw.vt != VT_BSTR) return cells.set_cell(row, column, value.as_number());
        const Text text = from_utf8(to_bytes(std::wstring(raw.bstrVal, ::SysStringLen(raw.bstrVal))));
        if (text.starts_with(U'=')) throw Refused{refused, L"a formula"};
        if (const auto typed = number(text)) return cells.set_cell(row, column, *typed);
        cells.set_cell(row, column, text.starts_with(U'\'') ? text.substr(1) : text);
    }

    void put(const ComValue& value) const
    {
        const auto values = value.cells();
        if (values.size() != static_cast<std::size_t>(area.cells())) throw Refused{refused, L"another size"};
        auto next = values.begin();
        for (int row = area.first_row; row <= area.last_row; ++row)
            for (int column = area.first_column; column <= area.last_column; ++column, ++next) {
                const VARIANT& raw = next->raw();
                if (values.size() > 1 && raw.vt == VT_BSTR && ::SysStringLen(raw.bstrVal) > longest_in_table)
                    throw Refused{refused, L"too long"};
                put(row, column, *next);
            }
    }

    ComValue is_merged() const
    {
        ComValue made(false);
        for (const auto& merged : book->merged(sheet)) {
            const bool touches = merged.first_row <= area.last_row && merged.last_row >= area.first_row &&
                                 merged.first_column <= area.last_column && merged.last_column >= area.first_column;
            const bool is_inside =
                merged.contains(area.first_row, area.first_column) && merged.contains(area.last_row, area.last_column);
            if (is_inside) return {true};
            if (touches) made.raw().vt = VT_NULL;
        }
        return made;
    }

    Area merged_area() const
    {
        for (const auto& merged : book->merged(sheet))
            if (merged.contains(area.first_row, area.first_column)) return merged;
        return area;
    }
};

ComValue make_count(Server& server, int count)
{
    return ServedObject::make(server, "Count", {{L"Count", [count](const Call&) { return ComValue(count); }}});
}

ComValue make_range(const Range& range)
{
    Server& server = range.book->server;
    const Area area = range.area;
    return ServedObject::make(
        server, "Range",
        {{L"Row", [area](const Call&) { return ComValue(area.first_row); }},
         {L"Column", [area](const Call&) { return ComValue(area.first_column); }},
         {L"Rows", [area, &server](const Call&) { return make_count(server, area.rows()); }},
         {L"Columns", [area, &server](const Call&) { return make_count(server, area.columns()); }},
         {L"MergeCells", [range](const Call&) { return range.is_merged(); }},
         {L"MergeArea",
          [range](const Call&) {
              return make_range({range.book, range.sheet, range.merged_area()});
          }},
         {L"Value2", [range](const Call& call) {
              if (!call.is_put) return range.values();
              range.put(call.arguments.at(0));
              return ComValue();
          }}});
}

/// The smallest area that holds everything; the first cell where there is nothing.
Area used_area(Worksheet& cells)
{
    std::optional<Area> used;
    for (int row = looked_at.first_row; row <= looked_at.last_row; ++row)
        for (int column = looked_at.first_column; column <= looked_at.last_column; ++column) {
            if (cells.is_empty(row, column)) continue;
            if (!used) used = Area{row, column, row, column};
            used->last_row = row;
            used->first_column = std::min(used->first_column, column);
            used->last_column = std::max(used->last_column, column);
        }
    return used.value_or(Area{1, 1, 1, 1});
}

ComValue make_sheet(const HeldBook& book, int index)
{
    return ServedObject::make(
        book->server, "Worksheet",
        {{L"Range",
          [book, index](const Call& call) {
              return make_range({book, index, area_named(path_in(call.arguments.at(0)).string())});
          }},
         {L"UsedRange",
          [book, index](const Call&) {
              return make_range({book, index, used_area(book->opened->worksheet(index))});
          }},
         {L"PrintOut", [](const Call&) { return ComValue(); }}});
}

ComValue make_sheets(const HeldBook& book)
{
    return ServedObject::make(
        book->server, "Worksheets",
        {{L"Count", [book](const Call&) { return ComValue(book->opened->worksheet_count()); }},
         {L"Item", [book](const Call& call) { return make_sheet(book, call.arguments.at(0).as_count()); }}});
}

// The engine below adds an extension of its own to a name that has none it knows.
void save(const Book& book, const std::filesystem::path& path)
{
    auto written = path;
    written += ".xlsx";
    book.opened->save_as(text_of(written));
    std::filesystem::rename(written, path);
}

ComValue make_book(const HeldBook& book)
{
    return ServedObject::make(book->server, "Workbook",
                              {{L"FileFormat", [book](const Call&) { return ComValue(book->format); }},
                               {L"Worksheets", [book](const Call&) { return make_sheets(book); }},
                               {L"SaveAs",
                                [book](const Call& call) {
                                    save(*book, path_in(call.arguments.at(0)));
                                    return ComValue();
                                }},
                               {L"Close", [book](const Call&) {
                                    book->opened->close(false);
                                    return ComValue();
                                }}});
}

} // namespace

ComValue make_workbook_application(Server& server)
{
    return ServedObject::make(server, "Application", application_members(server, L"Workbooks", [&server](const Call&) {
                                  return ServedObject::make(server, "Workbooks",
                                                            {{L"Open", [&server](const Call& call) {
                                                                  return make_book(std::make_shared<Book>(
                                                                      server, path_in(call.arguments.at(0))));
                                                              }}});
                              }));
}

} // namespace tarvik::test

#pragma once

#include "engines/spreadsheets/engine.h"
#include "tests/engines/spreadsheets/workbook_parts.h"
#include "tests/support/failure_of.h"
#include "tests/support/test_program.h"

namespace tarvik::test {

/// An engine over a temporary folder, and a workbook "t.xlsx" in it.
struct WorkbookFile {
    TemporaryFolder folder;
    Files files{folder.path()};
    RecordedPrinter printer;
    std::unique_ptr<SpreadsheetApplication> application =
        HiddenEngines({ooxml_workbooks(files, printer), {}}).create_spreadsheet();

    explicit WorkbookFile(const std::string& package, const std::string& name = "t.xlsx")
    {
        folder.write(name, package);
    }
    explicit WorkbookFile(const Parts& parts, const std::string& name = "t.xlsx")
        : WorkbookFile(make_package(parts), name)
    {
    }

    Workbook& open(TextView name = U"t.xlsx") { return application->open(name); }
    std::string saved(const std::string& name = "t.xlsx") const { return folder.read(name); }
    /// Writes one cell, closes with saving, and gives the first sheet's part.
    std::string sheet_after(int row, int column, const CellValue& value)
    {
        auto& workbook = open();
        workbook.worksheet(1).set_cell(row, column, value);
        workbook.close(true);
        return part_of(saved(), "xl/worksheets/sheet1.xml");
    }
};

} // namespace tarvik::test

#pragma once

#include "engines/spreadsheets/engine.h"
#include "tests/support/desk.h"

#include <map>

namespace tarvik::test {

/// Workbooks on the disk, which the embedded engine reads, calculates and writes.
class EnginesOnFiles final : public OfficeEngines {
public:
    std::unique_ptr<OoxmlSpreadsheets> engine; ///< to be set when the program's files stand
    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override { return engine->create(); }
    std::unique_ptr<DocumentApplication> create_document() override { return nullptr; }
};

/// What a workbook's first sheet holds: texts, and formulas, which begin with "=". A number is a text of digits.
using SheetContents = std::map<std::pair<int, int>, std::string>;
/// The bytes of a workbook whose formulas have no results yet.
std::string workbook_of(const SheetContents& contents);

/// A clerk whose sheets are real workbooks in the installation folder and on drive d.
class SheetDesk : public testing::Test, protected Desk<EnginesOnFiles> {
protected:
    SheetDesk() { office.engine = std::make_unique<OoxmlSpreadsheets>(started.files, started.printer); }

    /// Types the command and presses Enter; asked for a folder, the clerk types this one, and asked for a file, picks
    /// that one. The batch then runs to its end.
    void play(TextView command, TextView folder, std::optional<Text> file = std::nullopt,
              std::deque<Answer> replies = {});
    /// What the first sheet of a saved workbook shows.
    std::string shown(TextView path, int row, int column);
};

} // namespace tarvik::test

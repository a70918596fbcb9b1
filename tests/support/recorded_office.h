#pragma once

#include "office/automation.h"
#include "platform/failure.h"

#include <map>
#include <vector>

namespace tarvik::test {

/// What was done to one workbook between opening and closing.
struct RecordedTask {
    Text opened;
    bool visible = false;
    std::map<std::pair<int, int>, CellValue> cells;
    int cleared = 0;
    Text saved_as;
    bool closed = false, saved = false, quit = false;
};

/// A spreadsheet program that only keeps what it is asked to do. An opening whose path ends in `failing` throws.
class RecordedOffice final : public OfficeEngines {
public:
    std::vector<RecordedTask> tasks;
    Text failing;

    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override;
    std::unique_ptr<DocumentApplication> create_document() override { throw Failure(U"没有文字处理程序"); }

    /// The tasks whose file has this name, without folder.
    std::vector<RecordedTask> of(TextView name) const;
};

} // namespace tarvik::test

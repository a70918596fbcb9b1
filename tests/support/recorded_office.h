#pragma once

#include "engines/automation.h"
#include "platform/failure.h"

#include <map>
#include <vector>

namespace tarvik::test {

using Cells = std::map<std::pair<int, int>, CellValue>;

/// What was done to one workbook between opening and closing.
struct RecordedTask {
    Text opened;
    Cells cells; ///< written, the last value of each
    Text saved_as;
    int printed = 0;
    bool saved = false, quit = false;
};

/// The same for a document.
struct RecordedDocumentTask {
    Text opened;
    std::map<std::pair<int, int>, Text> cells, pictures;
    Text saved_as;
    int printed = 0;
    bool closed = false, quit = false;
};

/// Office programs that keep what they are asked to do and, of workbooks with one sheet, what their files would hold.
/// An opening whose path ends in `failing` throws.
class RecordedOffice final : public OfficeEngines {
public:
    std::vector<RecordedTask> tasks;
    std::vector<RecordedDocumentTask> documents;
    std::map<Text, Cells> files; ///< by the path as it was given; a path that nobody preset opens as an empty workbook

    Text failing;
    int open_applications = 0;

    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override;
    std::unique_ptr<DocumentApplication> create_document() override;

    /// The tasks whose file has this name, without folder.
    std::vector<RecordedTask> of(TextView name) const;
};

} // namespace tarvik::test

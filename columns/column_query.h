#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// Esc: takes the distinct lines of the open document that hold the text of the query box as the rows of the table
/// that `comp` selects, and says so.
void column_query(Program& program);

/// What became of a scan, beside its rows.
enum class ScanOutcome {
    Done,
    Refused, ///< an option is selected or the query box is empty: the table stays as it was
    TooMany, ///< there were more rows than a table holds, which was reported: the counts stay as they were
};
struct ScanResult {
    int rows = 0; ///< distinct ones; 0 unless Done
    ScanOutcome outcome = ScanOutcome::Done;
};

/// The scan of column_query() for a given text and without the closing message; the query box must hold some text all
/// the same. Whatever comes of it, the table pane gets a new text and betweenp.txt is written. When the scan runs,
/// `rowhits`, `resultcount`, the number box and, at a match, the panes' visibility change; when it is done also the row
/// texts and counts of the table that `comp` selects (`sufcount`, `sufrows` and `curcount`, or `sugcount` and
/// `sugrows`). Unless there were too many rows `dbresult` is True and the parameter window visible afterwards. Cells
/// stay.
ScanResult scan_document(Program& program, TextView text);
/// The same, for whoever asks for the number of distinct rows alone.
int query1(Program& program, TextView text);

} // namespace tarvik

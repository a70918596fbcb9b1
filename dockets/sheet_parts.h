#pragma once

#include "mainwindow/mainwindow.h"
#include "office/sheet_path.h"
#include "office/tasks.h"

/// What the sheets of this folder have in common: the fields of their first record, and how a sheet is saved.
namespace tarvik {

inline constexpr std::u32string_view contact_blanks = U"     "; ///< between a contact person and a telephone number

struct Cell {
    int row, column;
};

/// A field of the table's first row, as it stands there: in lower case.
Text first_field(const Program& program, std::size_t column);
/// How many records the sheet in hand has.
std::size_t record_count(const Program& program);
/// What stands ahead of the first blank; all of it when there is none.
Text first_word(TextView text);

/// Whether the table comes from a scan and the query box still holds the command, without which no sheet is made.
bool sheet_wanted(const Program& program, TextView command);

/// Whether a sheet gets a file of its own, which it does when the command stands at the beginning of the query box.
/// Keeps for the run's report that it does not.
bool saves_sheets(Program& program, TextView command);
/// Ends a sheet: saves the workbook under its name and closes it, or drops it when it gets no file of its own, for
/// saving would then fill the template for good.
void save_sheet(Program& program, SpreadsheetTask& task, TextView command, const SheetName& name);

} // namespace tarvik

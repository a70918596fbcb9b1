#pragma once

#include "mainwindow/mainwindow.h"
#include "runs/sheet_path.h"
#include "runs/tasks.h"

#include <span>

/// What the sheets of this folder have in common: the fields of their first record, and how a sheet is saved.
namespace tarvik {

inline constexpr std::u32string_view contact_blanks = U"     "; ///< between a contact person and a telephone number

// The service bills
inline constexpr std::u32string_view own_make = U"自制品"; ///< picks the lines that are billed
inline constexpr std::u32string_view service_question_tail =
    U"在此目录下，还应有包含RAM返修单号的，更名为3137.txt的辅助数据表文件。";

struct Cell {
    int row, column;
};

inline Text unchanged(TextView text)
{
    return text.str();
}

/// A cell that gets a field of the first record.
struct CellItem {
    Cell cell;
    std::size_t field;
    Text (*shape)(TextView field) = unchanged;
    bool only_filled = false; ///< with an empty field the cell keeps what it holds
};

/// A field of the table's first row, as it stands there: in lower case.
Text first_field(const Program& program, std::size_t column);
/// How many records the sheet in hand has.
std::size_t record_count(const Program& program);
/// What stands ahead of the first blank; all of it when there is none.
Text first_word(TextView text);

/// Writes the cells in their order, a document's into its first table.
void write_items(const Program& program, Worksheet& sheet, std::span<const CellItem> items);
void write_items(const Program& program, TextDocument& document, std::span<const CellItem> items);
/// Empties the rows from `first_row` down to the first one that holds nothing in these columns. Where nothing blanks a
/// template, they are what a list of an earlier run has left in it.
void clear_left_rows(Worksheet& sheet, int first_row, int first_column, int last_column);

/// Whether the table comes from a scan and the query box still holds the command, without which no sheet is made.
bool sheet_wanted(const Program& program, TextView command);
/// The same for the key at hand of a run, which is passed over where the box holds the command no more.
bool key_gets_sheet(Program& program, TextView command);

/// Whether a sheet gets a file of its own, which it does when the command stands at the beginning of the query box.
/// Keeps for the run's report that it does not.
bool saves_sheets(Program& program, TextView command);
/// Ends a sheet: saves the workbook under its name and closes it, or drops it when it gets no file of its own, for
/// saving would then fill the template for good.
void save_sheet(Program& program, SpreadsheetTask& task, TextView command, const SheetName& name);

// The two dockets, "An docket" with its fixed cells and "An testdocket" with those of a design

/// The template for the number of devices out of warranty, as a path.
Text docket_template(const Program& program);
/// The first part of a docket's name, marked when the list is longer than z6 is prepared for.
Text marked_for_length(const Program& program, Text name);
/// How many devices came back, and how many of them are within and out of warranty.
void write_counts(const Program& program, Worksheet& sheet);

/// A tick's scan: the key's lines among all devices into allcount, those out of warranty into partcount and the table.
void count_devices(Program& program, TextView key);
/// Splits the table and empties the templates.
void prepare_docket(Program& program);

} // namespace tarvik

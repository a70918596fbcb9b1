#pragma once

#include "mainwindow/mainwindow.h"
#include "runs/sheets.h"

#include <functional>
#include <span>

/// What the sheets of this folder have in common: the fields of their first record, and how a sheet is saved.
namespace tarvik {

struct Cell {
    int row, column;
};

/// A cell that gets a field of the first record.
struct CellItem {
    Cell cell;
    std::size_t field;
    Text (*shape)(TextView field) = nullptr; ///< what becomes of the field, which else stands as it is
    bool only_filled = false;                ///< with an empty field the cell keeps what it holds
};

/// A field of the table's first row, as it stands there: in lower case.
Text first_field(const Program& program, std::size_t column);
/// How many records the sheet in hand has.
std::size_t record_count(const Program& program);
/// What stands ahead of the first blank; all of it when there is none.
Text first_word(TextView text);

/// The contact person in this column and the telephone number in the next.
Text contact(const Program& program, std::size_t column);
/// What stands above a list of devices: customer, contact, and the number of the receipt or delivery.
void write_addressee(const Program& program, Worksheet& sheet, std::size_t customer_column, std::size_t contact_column,
                     std::size_t number_column);
/// How many devices came back, and how many of them are within and out of warranty.
void write_counts(Worksheet& sheet, int all, int in_warranty);

/// Writes the cells in their order.
void write_items(const Program& program, std::span<const CellItem> items,
                 const std::function<void(const Cell& cell, const Text& text)>& write);

/// Whether a sheet gets a file of its own, which it does when the command stands at the beginning of the query box.
/// Keeps for the run's report that it does not.
bool saves_sheets(Program& program, TextView command);
/// Ends a sheet: saves the workbook under its name and closes it, or drops it when it gets no file of its own, for
/// saving would then fill the template for good.
void save_sheet(Program& program, SpreadsheetTask& task, TextView command, const SheetName& name);

} // namespace tarvik

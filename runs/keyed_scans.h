#pragma once

#include "columns/columns.h"

/// Scans of the report files for one key. Each loads its file whole into the document pane, decoded once while the file
/// stays the same, then takes the lines that hold the key as the rows of the table, and gives the number of rows. An
/// empty file is reported and the pane's present text is scanned; a missing one throws Failure. More rows than a table
/// holds throw Failure too, for a sheet could only be made of an earlier key's.
namespace tarvik {

/// The number of rows that query1() gives, for whoever goes on with the table: throws Failure when there were too many
/// rows.
int checked_scan(Program& program, TextView key);

int query2(Program& program, TextView key, bool all_devices);   ///< 3139.txt, or 3138.txt
int query3(Program& program, TextView key, bool return_orders); ///< 3137.txt, or 保留.txt
int query5(Program& program, TextView key, bool in_report);     ///< 3158.txt, or the pane's present text
int query7(Program& program, TextView key, TextView path);      ///< the file; an empty path scans the pane

/// Makes the table of the key's rows, whose number goes to rowcount. A key without rows leaves both as they were.
void take_key_rows(Program& program);

/// The scan of a sheet family: the key's lines in a report of the installation folder, counted into partcount.
template <const std::u32string_view& report>
void count_in_report(Program& program, TextView key)
{
    program.form1.partcount = query7(program, key, installed(program, report));
}

} // namespace tarvik

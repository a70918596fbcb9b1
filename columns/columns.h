#pragma once

#include "mainwindow/mainwindow.h"
#include "mainwindow/scratch_file.h"

#include <optional>
#include <vector>

/// What this folder offers. The tables SUF and SUG are made in two steps: a column query takes the lines of the open
/// document as row texts, and the split cuts them into cells. A table of n rows has its data in rows 0 to n-1 and a
/// closing row n with nothing between its two TABs; columns count from 1. Above the tables stand the sort, the
/// statistics, the comparisons, the date check and the in-field query; the keys drive them all.
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

/// The scan of column_query() for a given text, which `announces` what it has found or says nothing; the query box must
/// hold some text all the same. Whatever comes of it, the table pane gets a new text and betweenp.txt is written. When
/// the scan runs, `rowhits`, `resultcount`, the number box and, at a match, the panes' visibility change; when it is
/// done also the row texts and counts of the table that `comp` selects (`sufcount`, `sufrows` and `curcount`, or
/// `sugcount` and `sugrows`). Unless there were too many rows `dbresult` is True and the parameter window visible
/// afterwards. Cells stay.
ScanResult query1(Program& program, TextView text, bool announces = false);

/// Cuts the row texts of the table that `comp` selects into its cells, columns 1 to 99, and shows them. Cells that a
/// row does not reach and rows above the new count keep what they held. Nothing happens to a table of no rows but that
/// the table pane is emptied.
void devision1(Program& program);

/// The sort key of a cell, made from the codes that its characters have in the system's code page.
double sunnum(TextView text);

/// Two places whose contents change.
struct Swap {
    std::size_t first, second;
};

/// The swaps that a selection sort in ascending order makes, in their order: at a step `first`, which only rises, the
/// places `first` and `second` change. A key of 0 never takes part, so its place stays; among equal keys the first is
/// taken. Steps that change nothing are left out.
std::vector<Swap> selection_swaps(const std::vector<double>& keys);

/// The key z: sorts SUF by the column in Form3.Text1(5). Only that column's cells and the row texts move. Refuses while
/// `comp` selects SUG; a box that holds no column throws Failure before anything has changed.
void sort_rows(Program& program);

// The distinct values of a column of SUF with their counts, over as many rows as the table last queried or split has.
// All forms leave `distinct`, `distinctn` and `colcopy` as the count made them and show the view with its total. A
// column outside 0 to 180 throws Failure before anything has changed.

/// The key "/": the column stands in Form3.Text1(5) and is reported first. Refuses while `comp` selects SUG.
void column_statistics(Program& program);

/// Without a message, and with the values as the keys of a report run: fills `keylist` and sets `keycount`. More than
/// `keylist` has room for are reported, and the first ones kept. Does nothing before the first column query or while
/// `comp` is True.
void statistitt(Program& program, int column);

/// A value of the counted column. It points into the table's storage.
struct Count {
    TextView value;
    std::size_t count = 0;
    std::size_t first_row = 0;
};

/// The values in the order of their first appearance.
struct Statistic {
    std::vector<Count> counts;
    std::size_t total = 0;
};

/// The count as such, for other forms of it: nothing where statistitt() does nothing, with the pane emptied unless no
/// column query has run.
std::optional<Statistic> count_for_command(Program& program, int column);
/// The view of the counts with their total; `file` is its scratch file.
void show_statistic(Program& program, ScratchFile& file, const Statistic& statistic);
inline constexpr std::u32string_view statistics_file = U"betweensum.txt";

// The comparisons. Their parameters are those of Form3.Text1(0) to Text1(2); a comparison of two tables takes the
// columns `sufcol` of SUF and of SUG the one in Form3.Text1(4) at this very moment.

/// The key p: the date check or the in-field query inside SUF, or with `comp` True a comparison of the two tables, as
/// the user answers. A box that holds no usable number throws Failure and leaves the table pane and `compcount` as they
/// were.
void comparison_key(Program& program);

/// Shows the rows whose dates in columns A and B lie more than C days apart. A time of day behind a date is cut from
/// the cell for good, and a compact date gets its hyphens there. A date of fewer than 8 characters ends the check with
/// its message and no view; longer texts that are no dates are passed over and named at the end. A box that holds no
/// column or number throws Failure before anything has changed.
void date_check(Program& program);

/// Each value of the one column with each of the other: shows the rows of SUF whose value SUG has too, or with `notcap`
/// the rows that have no such value, in which case the matched row texts of SUF are emptied for good.
void cross_comparison(Program& program);

// The keys of the query box that drive the column engine, and the buttons that spell them

/// Esc at any time, the other keys of the engine once a column query has run. Gives whether the key was one of them;
/// `eaten` is set when it does not reach the box, before its work begins.
bool column_keys(Program& program, char32_t key, bool& eaten);

/// "Esc", "q" and the third keys of the frames; they work whatever has the focus and without a query before.
void Command7_Click(Program& program, int index);
void Command8_Click(Program& program, int index);
void Command9_Click(Program& program, int index);

// Numbers that the boxes of the parameter window hold, read at the moment of use

/// The column in Form3.Text1(index), a whole number from 0 to 180. Throws Failure that names the box.
std::size_t box_column(const Program& program, int index);
/// Any number in that box. Throws Failure that names the box.
double box_number(const Program& program, int index);
/// A position in a text, a whole number of at least `least`. Throws Failure that names the box.
double box_position(const Program& program, int index, double least);

/// The same test for a column that does not come from a box.
std::size_t checked_column(int column);

// The parameter window Form3 and the notes file that it shows. A notes file that does not exist reads as an empty one.

/// The key "?": shows the notes in the table pane, if there are any and data are shown.
void show_notes_in_pane(Program& program);

/// 0 "确认": leaves the notes, after the question whether to save them, or minimises the window. Notes that cannot be
/// saved throw Failure and stay in view. 1 "说明": shows the notes as the file has them.
void Form3_Command1_Click(Program& program, int index);
/// Lays notes and buttons out for the window's width and height.
void Form3_Resize(Program& program);
/// Closing hides the window; its boxes keep their texts.
void Form3_Close(Program& program);

} // namespace tarvik

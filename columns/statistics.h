#pragma once

#include "mainwindow/mainwindow.h"
#include "mainwindow/scratch_file.h"

#include <optional>
#include <vector>

/// The distinct values of a column of SUF with their counts, over as many rows as the table last queried or split has.
/// All forms leave `distinct`, `distinctn` and `colcopy` as the count made them and show the view with its total. A
/// column outside 0 to 180 throws Failure before anything has changed.
namespace tarvik {

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

} // namespace tarvik

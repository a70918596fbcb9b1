#pragma once

#include "mainwindow/mainwindow.h"

#include <vector>

namespace tarvik {

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

} // namespace tarvik

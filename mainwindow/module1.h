#pragma once

#include "mainwindow/table.h"

namespace tarvik {

/// The arrays and flags that all of the program shares. An array lives as long as the program.
struct Module1 {
    TextArray pages{1'000'000};    ///< the open document in pages; index 0 is the first
    TextArray hits{1'000'000};     ///< results of the query with no option
    TextArray filehits{1'000'000}; ///< results of the sentence query
    TextArray cnhits{1'000'000};   ///< entries of the Chinese dictionary
    TextArray enhits{1'000'000};   ///< entries of the English dictionary's letter files
    TextArray zhhits{1'000'000};   ///< entries of the English dictionary for other words

    Table suf;
    Table sug;
    RowTexts sufrow{300'000};
    RowTexts sugrow{300'000};
    TextArray rowhits{1'000'000}; ///< lines that a column query found, the removed duplicates empty
    TextArray distinct{300'000};  ///< values of a statistic
    TextArray distinctn{300'000}; ///< count of each, as decimal text
    TextArray colcopy{300'000};   ///< working copy of the counted column
    TextArray keylist{10'000};    ///< keys of a report run

    bool analysismode = false; ///< the window shows the data-analysis controls
    bool designeropen = false; ///< the report designer is shown
};

} // namespace tarvik

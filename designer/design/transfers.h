#pragma once

#include "mainwindow/mainwindow.h"

#include <functional>

/// What a design writes: the cells of a spreadsheet that it names, and the elements of SUF that they receive.
namespace tarvik {

/// Element of the table SUF, rows from 0 and columns from 1. Rows beyond `rowcount` are another key's and read as
/// empty; a cell that the key's own line does not reach keeps what stood there, as everywhere in the table.
TextView own_element(const Program& program, int row, int column);

/// One cell that a design writes. `box` is the index in Text1 of the design's first box.
struct DesignWrite {
    int row, column;
    Text text;
    int box;
};

/// The text of an element by row and column, empty for one that there is none of; and how many rows there are.
struct Elements {
    std::function<TextView(int row, int column)> text;
    int rows = 0;
};

/// Calls `write` for every cell that the static rows of the design name, then for those of the dynamic ones, in their
/// order. Texts go in upper case; an empty element writes nothing. A row of the design with a box that is empty or no
/// whole number is out of use, and so is the dynamic block without a first row.
void transfer(const Form4& form4, const Elements& elements, const std::function<void(const DesignWrite&)>& write);
/// The same from SUF into a worksheet.
void transfer(const Program& program, Worksheet& sheet);

} // namespace tarvik

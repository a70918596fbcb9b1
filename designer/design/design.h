#pragma once

#include "mainwindow/mainwindow.h"

#include <functional>

/// A report design: it lives in the boxes of the designer's window, visible or not, and is kept in parameter files.
namespace tarvik {

/// Writes a parameter line into the boxes: the fields between asterisks, the query text first, the fifty boxes of
/// Text1, the fifty of Text2, and behind the last asterisk the key column with whatever ends the line. The first
/// character of a field is never taken for its end. Boxes that the line does not reach keep their text.
void Opensesame(Form4& form4, TextView line);

/// The line that a parameter file holds: the texts of the boxes as they are, asterisks between them, and CR LF. A line
/// end that the key column brought along from its file stands before that.
Text design_line(Form4& form4);

/// Loads a parameter file of the installation folder; an empty one leaves the boxes as they are. Gives false when there
/// is no such file. Throws Failure when it cannot be read.
bool load_design(Program& program, TextView file);

/// The whole number in a box of the design, blanks and line ends around it aside; nothing when it is empty or holds
/// anything else, which takes the row of the design out of use.
std::optional<int> design_number(const TextBox& box);

/// The row of the window that shows the boxes of this index: "静态 第3行", "动态 第1行".
Text design_row_name(int index);

/// The key column that the design names, 0 to 180; column 0 holds nothing. Throws Failure when the box holds no such
/// number.
int design_key_column(const Program& program);

// What a design writes: the cells of a spreadsheet that it names, and the elements of SUF that they receive

/// Element of the table SUF, rows from 0 and columns from 1. Rows beyond `rowcount` are another key's and read as
/// empty; a cell that the key's own line does not reach keeps what stood there, as everywhere in the table.
TextView own_element(const Program& program, int row, int column);

/// One cell that a design writes. `box` is the index in Text1 of the design's first box.
struct DesignWrite {
    int row, column;
    TextView text;
    int box;
};
using DesignWriter = std::function<void(const DesignWrite&)>;

/// The text of an element by row and column, empty for one that there is none of; and how many rows there are.
struct Elements {
    std::function<TextView(int row, int column)> text;
    int rows = 0;
};

/// Calls `write` for every cell that the static rows of the design name. An empty element writes nothing, and a row
/// with a box that is empty or no whole number is out of use.
void write_static_rows(const Form4& form4, const Elements& elements, const DesignWriter& write);
/// The same for the columns of the dynamic rows, of each row of the elements from `first_row` of the sheet on.
void write_dynamic_rows(const Form4& form4, const Elements& elements, int first_row, const DesignWriter& write);
/// The static rows, then the dynamic ones, which are out of use without a first row.
void transfer(const Form4& form4, const Elements& elements, const DesignWriter& write);
/// The same from SUF into a worksheet, in upper case.
void transfer(const Program& program, Worksheet& sheet);

} // namespace tarvik

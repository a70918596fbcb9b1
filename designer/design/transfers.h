#pragma once

#include "mainwindow/mainwindow.h"

#include <functional>

/// What a design writes: the cells of a spreadsheet that it names, and the elements of SUF that they receive.
namespace tarvik {

/// Elements of the table SUF as the last scan made them: its first `rowcount` rows, each as wide as its line. What
/// lies beyond is another scan's and reads as the empty text.
class OwnElements {
public:
    explicit OwnElements(const Program& program) : program_(program) {}
    TextView operator()(int row, int column);

private:
    const Program& program_;
    int row_ = -1;
    int width_ = 0; // of row_
};

/// One cell that a design writes. `box` is the index in Text1 of the design's column box.
struct DesignWrite {
    int row, column;
    Text text;
    int box;
};

/// Calls `write` for every cell that the static rows of the design name, then for those of the dynamic ones, in their
/// order. Texts go in upper case; an empty element writes nothing. A row of the design with a box that is empty or no
/// whole number is out of use, and so is the dynamic block without a first row.
void transfer(const Program& program, const std::function<void(const DesignWrite&)>& write);
/// The same into a worksheet.
void transfer(const Program& program, Worksheet& sheet);

} // namespace tarvik

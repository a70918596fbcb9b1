#pragma once

#include "engines/sheet_picture.h"
#include "mainwindow/control.h"

namespace tarvik {

/// A cell that a design has written, and the row of the designer's window that names it.
struct WrittenCell {
    int row, column;
    Text design_row;
};

/// A report as it would look.
struct SheetPreview {
    SheetPicture picture;
    std::vector<WrittenCell> written; ///< each the first cell of its range
};

/// The window that shows a preview; its caption tells of what. Hidden until there is one.
class PreviewArea : public Control {
public:
    using Control::Control;
    const SheetPreview& contents() const { return contents_; }
    void show(SheetPreview contents)
    {
        contents_ = std::move(contents);
        touched(Property::Contents);
        set_visible(true);
    }

    /// The cell that the user has clicked last; 0 before the first click.
    int picked_row() const { return picked_row_; }
    int picked_column() const { return picked_column_; }
    void pick(int row, int column)
    {
        picked_row_ = row;
        picked_column_ = column;
    }

private:
    SheetPreview contents_;
    int picked_row_ = 0, picked_column_ = 0;
};

} // namespace tarvik

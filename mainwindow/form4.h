#pragma once

#include "engines/sheet_picture.h"
#include "mainwindow/control.h"

#include <vector>

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

/// The report designer. Its boxes carry a design, visible or not.
struct Form4 {
    explicit Form4(ModelListeners& listeners);

    /// The boxes of Text1 and Text2 from this index on are the dynamic block of the design, those before it in pairs
    /// its single cells.
    static constexpr int first_dynamic = 28;
    static constexpr int last_box = 49;

    /// The 102 boxes in the order in which a parameter file holds them: Text3, Text1, Text2, Text4.
    std::vector<TextBox*> design_boxes();
    /// What a box gets from somewhere else than the user: it is no loss when the window closes.
    void load(TextBox& box, const Text& text);
    /// The texts of all boxes are kept elsewhere.
    void boxes_are_kept();
    /// Whether a box holds a text that the user has put there since.
    bool holds_typed_text() const;

    Window window;
    ControlArray<TextBox> Text1, Text2;   ///< 0 to 49: targets in the spreadsheet, sources in SUF
    TextBox Text3;                        ///< query text
    TextBox Text4;                        ///< key column
    Control Command1, Command2, Command3; ///< save, check, preview
    PreviewArea Preview;
    Control Frame1, Frame2, Frame3;
    Control Label1, Label2, Label3, Label4, Label5;
    std::optional<int> focused_pair; ///< index in Text1 of the pair of boxes whose row had the focus last

private:
    std::map<const TextBox*, Text> kept_;
};

/// Gives the boxes the texts of the window's design, as a window has that was just loaded.
void load_design_texts(Form4& form4);

} // namespace tarvik

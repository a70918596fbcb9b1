#pragma once

#include "mainwindow/control.h"

#include <vector>

namespace tarvik {

/// A match that is shown in colour; `size` is in points.
struct Mark {
    Position start;
    std::size_t length = 0;
    Colour colour = 0;
    int size = 0;
    friend bool operator==(const Mark&, const Mark&) = default;
};

/// One of the three stacked rich-text boxes.
class Pane : public TextControl {
public:
    using TextControl::TextControl;

    const PaneText& content() const override { return content_; }
    TextView text() const { return content_.view(); }
    const Document& document() const { return content_.document(); }
    bool empty() const { return content_.empty(); }
    bool multi_line() const override { return true; }

    /// A new text has no marks and no selection.
    void set_content(PaneText content);
    void set_text(TextView text) override { set_content(PaneText(text)); }
    void append(TextView text);

    /// Marks behind the place move along, those in it go.
    void replace_selection(TextView text) override;

    /// Colour and size at the caret, or of the selection that was last given one.
    Colour selection_colour() const { return selection_colour_; }
    int selection_font_size() const { return selection_font_size_; }
    void set_selection_colour(Colour colour) { change(selection_colour_, colour, Property::SelColor); }
    void set_selection_font_size(int points) { change(selection_font_size_, points, Property::SelFontSize); }

    const std::vector<Mark>& marks() const { return marks_; }
    void set_marks(std::vector<Mark> marks) { change(marks_, std::move(marks), Property::Marks); }
    /// The size of all of the text that is not marked; 0 for the design's.
    int text_font_size() const { return text_font_size_; }
    void set_text_font_size(int points) { change(text_font_size_, points, Property::SelFontSize); }

    bool line_breaking() const { return line_breaking_; }
    /// Whether lines break at the pane's width; start-up alone sets it.
    void set_line_breaking(bool on) { line_breaking_ = on; }

private:
    PaneText content_;
    std::vector<Mark> marks_;
    Colour selection_colour_ = 0;
    int selection_font_size_ = 0;
    int text_font_size_ = 0;
    bool line_breaking_ = false;
};

} // namespace tarvik

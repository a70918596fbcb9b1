#pragma once

#include <string>
#include <vector>

#include <pugixml.hpp>

namespace tarvik::ooxml {

/// The rows by which a list grows behind all others of a sheet. Only the last one is an element, in a tree of its own;
/// those before it are the text that the part will hold, which takes a tenth of the memory.
class GrowingRows {
public:
    /// `sheet_data` is the element that holds the rows.
    explicit GrowingRows(pugi::xml_node sheet_data) : sheet_data_(sheet_data) {}

    /// Begins a row behind all others; the one begun before it becomes text.
    pugi::xml_node begin(int number);
    /// The number of the row that is an element here, or 0.
    int begun() const noexcept { return begun_; }
    /// Whether any of these rows is text.
    bool has_text_of(int first_row, int last_row) const noexcept
    {
        return last_ > 0 && first_row <= last_ && last_row >= first_;
    }
    /// All rows become text, and that stands in the part.
    void lay_down();
    /// All rows become elements of the part, which are given in their order; none of them is kept here any more.
    std::vector<pugi::xml_node> take_out();

private:
    void turn_to_text();
    void put_text();

    pugi::xml_node sheet_data_;
    pugi::xml_document row_; // that is begun
    int begun_ = 0;
    int first_ = 0, last_ = 0;          // of the rows that are text
    std::string text_;                  // that the part does not hold yet
    std::vector<pugi::xml_node> texts_; // in the part
};

} // namespace tarvik::ooxml

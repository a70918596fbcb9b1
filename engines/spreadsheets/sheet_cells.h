#pragma once

#include "engines/spreadsheets/calculation/places.h"

#include <functional>
#include <map>
#include <optional>
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

/// The rows and cells that a worksheet part has, found by place. Those that are written without a place get theirs.
/// Damage when one stands twice or out of order, or a place is none.
class SheetCells {
public:
    explicit SheetCells(pugi::xml_node worksheet);

    /// The cell's element, or a null node.
    pugi::xml_node find(Place place) const;
    /// The cell's element, made in its order if it is missing, with the format of its row or else of its column.
    pugi::xml_node ensure(Place place);
    using Visitor = std::function<void(Place, pugi::xml_node)>;
    /// All elements in the range, row by row. The visitor may change what is in a cell.
    void visit(const Range& range, const Visitor& visitor) const;
    /// The row's element, or a null node.
    pugi::xml_node row(int number) const;
    /// The last row and the last column with a cell; at least that, and {0, 0} where there never was one.
    Place extent() const noexcept { return extent_; }

    /// Until one of these is called the part lacks the rows by which the sheet has grown. As text they can be printed.
    void lay_down_grown_rows();
    void take_out_grown_rows() const;

private:
    struct Cell {
        int column;
        pugi::xml_node node;
    };
    struct Row {
        pugi::xml_node node;
        std::vector<Cell> cells; // by column

        std::vector<Cell>::const_iterator from(int column) const
        {
            return std::ranges::lower_bound(cells, column, {}, &Cell::column);
        }
    };
    struct ColumnFormat {
        int first;
        int last;
        const char* format; ///< as the part writes it, held by the tree
    };

    Row& add_row(int number, pugi::xml_node node) const;
    void forget_begun_row() const;
    void require_elements(int first_row, int last_row) const;
    Row& ensure_row(int number);
    const char* format_of_missing(const Row& row, int column);
    void widen(Row& row, Place place);

    pugi::xml_node worksheet_;
    pugi::xml_node sheet_data_;
    // A row is looked for in one of two forms, so that looking may change the form of all that have grown.
    mutable std::map<int, Row> rows_; // that are elements
    mutable GrowingRows grown_;
    Place extent_;
    std::optional<Range> dimension_;
    std::optional<std::vector<ColumnFormat>> column_formats_;
};

} // namespace tarvik::ooxml

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <pugixml.hpp>

namespace tarvik::ooxml {

struct TableCell {
    pugi::xml_node node;
    // Where in the table's grid, from 0, it begins, and how many columns of that it spans.
    int grid_column;
    int grid_span;
};

/// The first table among the document's own text; tables in text boxes, headers or cells do not count. Rows and columns
/// count from 1, as the word processor counts them: cells merged across are one cell of their row, a cell that
/// continues the one above keeps its number but cannot be had. Rows and cells are found in whatever wraps them, once:
/// what is written into cells leaves the table as it is.
class FirstTable {
public:
    /// Damage when there is no such table.
    explicit FirstTable(pugi::xml_node document);

    /// Damage when there is no such cell.
    const TableCell& cell(int row, int column);

private:
    struct Row {
        pugi::xml_node node;
        std::optional<std::vector<TableCell>> cells; ///< once somebody asked for them
    };

    const std::vector<TableCell>& cells_of(std::size_t row);
    bool is_covered(std::size_t row, const TableCell& cell);

    std::vector<Row> rows_;
};

} // namespace tarvik::ooxml

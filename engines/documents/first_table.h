#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

/// Ways through the elements of a document, which may nest to any depth, and to the cells of its first table.
namespace tarvik::ooxml {

/// The next node behind `node` and all that is in it, in document order and below `root`; else a null node.
pugi::xml_node node_behind(pugi::xml_node node, pugi::xml_node root) noexcept;
/// The elements of that local name below `root`, in document order, `most` of them at most. Neither those found nor
/// those named in `closed` are looked into; what wraps them (content controls, custom XML, tracked changes) is. Only
/// elements with the prefix of `root` count.
std::vector<pugi::xml_node> nearest(pugi::xml_node root, std::string_view local_name,
                                    std::initializer_list<std::string_view> closed = {},
                                    std::size_t most = static_cast<std::size_t>(-1));
/// The value of the attribute of that local name, whatever its prefix; empty if there is none.
std::string value_of(pugi::xml_node node, std::string_view local_name);

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

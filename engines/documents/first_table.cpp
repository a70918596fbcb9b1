#include "engines/documents/first_table.h"

#include "engines/packages/xml_part.h"

#include <algorithm>

namespace tarvik::ooxml {

pugi::xml_node node_behind(pugi::xml_node node, pugi::xml_node root) noexcept
{
    while (node && node != root) {
        if (const auto next = node.next_sibling()) return next;
        node = node.parent();
    }
    return {};
}

std::vector<pugi::xml_node> nearest(pugi::xml_node root, std::string_view local_name,
                                    std::initializer_list<std::string_view> closed, std::size_t most)
{
    std::vector<pugi::xml_node> found;
    const auto prefix = name_like(root, "");
    for (auto node = root.first_child(); node && found.size() < most;) {
        const std::string_view name = node.name();
        const auto is_it = [&](std::string_view local) {
            return name.starts_with(prefix) && name.substr(prefix.size()) == local;
        };
        const bool fits = is_it(local_name);
        if (fits) found.push_back(node);
        const auto inner =
            fits || std::any_of(closed.begin(), closed.end(), is_it) ? pugi::xml_node() : node.first_child();
        node = inner ? inner : node_behind(node, root);
    }
    return found;
}

std::string value_of(pugi::xml_node node, std::string_view local_name)
{
    for (const auto attribute : node.attributes()) {
        const std::string_view name = attribute.name();
        if (name.substr(name.find(':') + 1) == local_name) return unescaped(attribute.value());
    }
    return {};
}

namespace {

constexpr int most_grid_columns = 16'383; // no honest table goes beyond

int grid_columns(pugi::xml_node element, int otherwise)
{
    const auto value = value_of(element, "val");
    if (value.empty()) return otherwise;
    return static_cast<int>(std::clamp(leading_number(from_utf8(value)), 0.0, double{most_grid_columns}));
}

bool continues(pugi::xml_node merge)
{
    return merge && value_of(merge, "val") != "restart";
}

std::vector<TableCell> find_cells(pugi::xml_node row)
{
    std::vector<TableCell> cells;
    int column = grid_columns(child_named(child_named(row, "trPr"), "gridBefore"), 0);
    for (const auto node : nearest(row, "tc")) {
        const auto properties = child_named(node, "tcPr");
        const bool is_part = !cells.empty() && continues(child_named(properties, "hMerge"));
        const int end =
            std::min(column + std::max(1, grid_columns(child_named(properties, "gridSpan"), 1)), most_grid_columns);
        if (!is_part) cells.push_back({node, column, 0});
        cells.back().grid_span = end - cells.back().grid_column;
        column = end;
    }
    return cells;
}

pugi::xml_node vertical_merge(pugi::xml_node cell)
{
    return child_named(child_named(cell, "tcPr"), "vMerge");
}

} // namespace

FirstTable::FirstTable(pugi::xml_node document)
{
    const auto tables = nearest(child_named(document, "body"), "tbl", {"p"}, 1);
    if (tables.empty()) throw Damage(U"文档里没有表格。");
    for (const auto row : nearest(tables.front(), "tr")) rows_.push_back({row, {}});
}

const std::vector<TableCell>& FirstTable::cells_of(std::size_t row)
{
    auto& cells = rows_[row].cells;
    if (!cells) cells = find_cells(rows_[row].node);
    return *cells;
}

bool FirstTable::is_covered(std::size_t row, const TableCell& cell)
{
    if (row == 0 || !continues(vertical_merge(cell.node))) return false;
    const auto& above = cells_of(row - 1);
    return std::any_of(above.begin(), above.end(), [&](const TableCell& one) {
        return one.grid_column == cell.grid_column && vertical_merge(one.node);
    });
}

const TableCell& FirstTable::cell(int row, int column)
{
    const auto place = [&] { return U"第 " + number_text(row) + U" 行第 " + number_text(column) + U" 列"; };
    const auto missing = [&] { return Damage(U"文档的第一个表格没有" + place() + U"的单元格。"); };
    if (row < 1 || row > static_cast<int>(rows_.size())) throw missing();
    const auto index = static_cast<std::size_t>(row - 1);
    const auto& cells = cells_of(index);
    if (column < 1 || column > static_cast<int>(cells.size())) throw missing();
    const auto& cell = cells[static_cast<std::size_t>(column - 1)];
    if (is_covered(index, cell)) {
        throw Damage(U"文档的第一个表格里，" + place() + U"的单元格已并入上方的单元格。");
    }
    return cell;
}

} // namespace tarvik::ooxml

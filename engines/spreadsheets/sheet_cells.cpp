#include "engines/spreadsheets/sheet_cells.h"

#include "engines/packages/xml_part.h"

#include <utility>

namespace tarvik::ooxml {

namespace {

// Rows and cells stand in their order, each once.
int written_or_next(const std::optional<int>& written, bool is_written, int last_number, int limit)
{
    const int number = is_written ? written.value_or(0) : last_number + 1;
    if (number < 1 || number > limit) throw Damage(U"工作表里有无效的行号或单元格位置。");
    if (number <= last_number) throw Damage(U"工作表里的行或单元格有重复，或次序不对。");
    return number;
}

} // namespace

pugi::xml_node GrowingRows::begin(int number)
{
    turn_to_text();
    begun_ = number;
    auto row = row_.append_child(name_like(sheet_data_, "row").c_str());
    row.append_attribute("r").set_value(number);
    return row;
}

void GrowingRows::turn_to_text()
{
    if (begun_ == 0) return;
    append_printed(row_.first_child(), text_);
    row_.reset();
    last_ = std::exchange(begun_, 0);
    if (first_ == 0) first_ = last_;
    constexpr std::size_t text_at_once = std::size_t{1} << 16;
    if (text_.size() >= text_at_once) put_text();
}

void GrowingRows::put_text()
{
    if (text_.empty()) return;
    texts_.push_back(sheet_data_.append_child(pugi::node_pcdata));
    texts_.back().set_value(text_.c_str());
    text_.clear();
}

void GrowingRows::lay_down()
{
    turn_to_text();
    put_text();
}

std::vector<pugi::xml_node> GrowingRows::take_out()
{
    lay_down();
    const auto last_text = sheet_data_.last_child();
    for (const auto text : texts_) append_elements(sheet_data_, text.value());
    std::vector<pugi::xml_node> rows;
    for (auto row = last_text.next_sibling(); row; row = row.next_sibling()) rows.push_back(row);
    for (const auto text : texts_) sheet_data_.remove_child(text);
    texts_.clear();
    first_ = last_ = 0;
    return rows;
}

SheetCells::SheetCells(pugi::xml_node worksheet)
    : worksheet_(worksheet), sheet_data_(child_named(worksheet, "sheetData")), grown_(sheet_data_)
{
    if (!sheet_data_) throw Damage(U"工作表没有单元格数据。");
    int last = 0;
    for (auto node : sheet_data_.children()) {
        if (!is_named(node, "row")) continue;
        const auto written = node.attribute("r");
        last =
            written_or_next(parse_count(written.value(), last_row_of_sheet), !written.empty(), last, last_row_of_sheet);
        if (!written) node.append_attribute("r").set_value(last);
        const auto& cells = add_row(last, node).cells;
        if (!cells.empty()) extent_ = {last, std::max(extent_.column, cells.back().column)};
    }
    dimension_ = parse_range(attribute_text(child_named(worksheet_, "dimension"), "ref"));
}

// Behind all others.
SheetCells::Row& SheetCells::add_row(int number, pugi::xml_node node) const
{
    auto& row = rows_.emplace_hint(rows_.end(), number, Row{node, {}})->second;
    int last = 0;
    for (auto cell : node.children()) {
        if (!is_named(cell, "c")) continue;
        const auto written = cell.attribute("r");
        const auto place = parse_place(written.value());
        const auto column = place && place->row == number ? std::optional(place->column) : std::nullopt;
        last = written_or_next(column, !written.empty(), last, last_column_of_sheet);
        if (!written) cell.append_attribute("r").set_value(place_name({number, last}).c_str());
        row.cells.push_back({last, cell});
    }
    return row;
}

// Its element is about to go.
void SheetCells::forget_begun_row() const
{
    if (grown_.begun() > 0) rows_.erase(grown_.begun());
}

void SheetCells::lay_down_grown_rows()
{
    forget_begun_row();
    grown_.lay_down();
}

void SheetCells::take_out_grown_rows() const
{
    forget_begun_row();
    for (const auto row : grown_.take_out()) add_row(row.attribute("r").as_int(), row);
}

void SheetCells::require_elements(int first_row, int last_row) const
{
    if (grown_.has_text_of(first_row, last_row)) take_out_grown_rows();
}

pugi::xml_node SheetCells::find(Place place) const
{
    require_elements(place.row, place.row);
    const auto row = rows_.find(place.row);
    if (row == rows_.end()) return {};
    const auto cell = row->second.from(place.column);
    return cell != row->second.cells.end() && cell->column == place.column ? cell->node : pugi::xml_node();
}

SheetCells::Row& SheetCells::ensure_row(int number)
{
    if (!rows_.empty() && rows_.rbegin()->first == number) return rows_.rbegin()->second; // a list grows there
    require_elements(number, number);
    auto next = rows_.lower_bound(number);
    if (next == rows_.end()) {
        forget_begun_row();
        return add_row(number, grown_.begin(number));
    }
    if (next->first == number) return next->second;
    if (next->first == grown_.begun()) {
        take_out_grown_rows();
        next = rows_.lower_bound(number);
    }
    auto node = sheet_data_.insert_child_before(name_like(sheet_data_, "row").c_str(), next->second.node);
    node.append_attribute("r").set_value(number);
    return rows_.emplace_hint(next, number, Row{node, {}})->second;
}

pugi::xml_node SheetCells::ensure(Place place)
{
    auto& row = ensure_row(place.row);
    const auto next = row.from(place.column);
    if (next != row.cells.end() && next->column == place.column) return next->node;
    const auto name = name_like(row.node, "c");
    // Behind the last cell there may be an extension list, which must stay last.
    auto node = row.cells.empty()         ? row.node.prepend_child(name.c_str())
                : next == row.cells.end() ? row.node.insert_child_after(name.c_str(), row.cells.back().node)
                                          : row.node.insert_child_before(name.c_str(), next->node);
    node.append_attribute("r").set_value(place_name(place).c_str());
    const char* format = format_of_missing(row, place.column);
    if (*format != 0) node.append_attribute("s").set_value(format);
    row.cells.insert(next, {place.column, node});
    extent_ = {std::max(extent_.row, place.row), std::max(extent_.column, place.column)};
    widen(row, place);
    return node;
}

const char* SheetCells::format_of_missing(const Row& row, int column)
{
    const auto format = row.node.attribute("s");
    if (format && row.node.attribute("customFormat").as_bool()) return format.value();
    if (!column_formats_) {
        column_formats_.emplace();
        for (const auto node : child_named(worksheet_, "cols").children()) {
            if (!node.attribute("style")) continue;
            column_formats_->push_back(
                {node.attribute("min").as_int(), node.attribute("max").as_int(), node.attribute("style").value()});
        }
    }
    for (const auto& one : *column_formats_) {
        if (column >= one.first && column <= one.last) return one.format;
    }
    return "";
}

void SheetCells::widen(Row& row, Place place)
{
    row.node.remove_attribute("spans"); // only a hint, and readers differ on a wrong one
    if (!dimension_ || dimension_->contains(place)) return;
    dimension_->include(place);
    set_attribute(child_named(worksheet_, "dimension"), "ref", range_name(*dimension_));
}

void SheetCells::visit(const Range& range, const Visitor& visitor) const
{
    require_elements(range.first.row, range.last.row);
    for (auto row = rows_.lower_bound(range.first.row); row != rows_.end() && row->first <= range.last.row; ++row) {
        auto cell = row->second.from(range.first.column);
        for (; cell != row->second.cells.end() && cell->column <= range.last.column; ++cell)
            visitor({row->first, cell->column}, cell->node);
    }
}

pugi::xml_node SheetCells::row(int number) const
{
    require_elements(number, number);
    const auto row = rows_.find(number);
    return row == rows_.end() ? pugi::xml_node() : row->second.node;
}

} // namespace tarvik::ooxml

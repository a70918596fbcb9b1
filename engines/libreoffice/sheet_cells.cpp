#include "engines/libreoffice/sheet_cells.h"

#include "engines/packages/damage.h"

#include <algorithm>
#include <utility>

namespace tarvik::libreoffice {

namespace {

constexpr Area whole_sheet{1, 1, 1'048'576, 16'384};
constexpr std::size_t longest_text = 32'767; // UTF-16 units

bool is_nothing(const CellValue& value)
{
    const auto* text = std::get_if<Text>(&value);
    return text && text->empty();
}

void check(Place place)
{
    if (whole_sheet.contains(place.row, place.column)) return;
    throw ooxml::Damage(U"工作表没有第 " + number_text(place.row) + U" 行、第 " + number_text(place.column) +
                        U" 列的单元格。");
}

/// CR LF is one line break of a cell; what goes beyond the longest text of a cell is left out.
Text cell_text(const Text& told)
{
    Text made;
    std::size_t units = 0;
    for (std::size_t i = 0; i < told.size(); ++i) {
        if (told[i] == U'\r' && i + 1 < told.size() && told[i + 1] == U'\n') continue;
        units += told[i] > 0xffff ? 2 : 1;
        if (units > longest_text) break;
        made += told[i];
    }
    return made;
}

/// LibreOffice gives no reason where it writes nothing.
template <typename Work>
void naming_cell(Place place, const Work& work)
{
    try {
        work();
    } catch (const ConnectionLost&) {
        throw;
    } catch (const std::runtime_error&) {
        throw std::runtime_error(to_utf8(U"第 " + number_text(place.row) + U" 行、第 " + number_text(place.column) +
                                         U" 列起的单元格不能改写，那里可能有数组公式"));
    }
}

/// Rectangles that cover exactly the places, which are in ascending order: runs along a row, and equal runs of rows
/// that follow each other together.
std::vector<Area> rectangles(const std::vector<Place>& places)
{
    std::vector<Area> found;
    std::map<std::pair<int, int>, std::size_t> last_with_columns; // the lowest rectangle of these columns
    for (std::size_t start = 0, end = 0; start < places.size(); start = end) {
        const auto [row, column] = places[start];
        while (end < places.size() && places[end] == Place{row, column + static_cast<int>(end - start)}) ++end;
        const int last_column = column + static_cast<int>(end - start) - 1;
        const auto [known, is_new] = last_with_columns.try_emplace({column, last_column}, found.size());
        if (!is_new && found[known->second].last_row == row - 1) {
            found[known->second].last_row = row;
            continue;
        }
        known->second = found.size();
        found.push_back({row, column, row, last_column});
    }
    return found;
}

} // namespace

const SheetContent& SheetCells::content()
{
    if (!content_) {
        content_ = file_.call([this](OpenWorkbook& file) { return file.read(sheet_); });
        writes_read_ = writes_.sent;
    }
    return *content_;
}

/// What was written since the content was read may have changed a formula's result.
void SheetCells::read_formulas_anew(const Area& area)
{
    settle();
    if (writes_read_ == writes_.count) return;
    const auto& cells = content().cells;
    const auto is_asked_for = [&](const HeldCell& cell) {
        return cell.is_formula && area.contains(cell.place.row, cell.place.column) && !written_.contains(cell.place);
    };
    const auto first = std::ranges::lower_bound(cells, Place{area.first_row, 1}, {}, &HeldCell::place);
    const auto end = std::ranges::lower_bound(cells, Place{area.last_row + 1, 1}, {}, &HeldCell::place);
    if (std::none_of(first, end, is_asked_for)) return;
    writes_.send();
    content_.reset();
}

/// What the sheet held when it was read last.
const HeldCell* SheetCells::held(Place place)
{
    const auto& cells = content().cells;
    const auto found = std::ranges::lower_bound(cells, place, {}, &HeldCell::place);
    return found != cells.end() && found->place == place ? &*found : nullptr;
}

bool SheetCells::holds_nothing(Place place)
{
    const auto written = written_.find(place);
    if (written != written_.end()) return is_nothing(written->second);
    const auto* cell = held(place);
    return !cell || is_nothing(cell->value);
}

CellValue SheetCells::value(Place place)
{
    check(place);
    read_formulas_anew({place.row, place.column, place.row, place.column});
    return raw_value(place);
}

CellValue SheetCells::raw_value(Place place)
{
    if (const auto written = written_.find(place); written != written_.end()) return written->second;
    const auto* const cell = held(place);
    if (!cell) return Text();
    const auto* const number = std::get_if<double>(&cell->value);
    const bool may_be_logical = number && (*number == 0 || *number == 1);
    if (may_be_logical && shown_as(place) == ShownAs::Logical) return Text(*number == 1 ? U"True" : U"False");
    return cell->value;
}

ShownAs SheetCells::shown_as(Place place)
{
    return file_.call([&](OpenWorkbook& file) { return file.shown_as(sheet_, place.row, place.column); });
}

bool SheetCells::is_date(Place place)
{
    return std::holds_alternative<double>(value(place)) && shown_as(place) == ShownAs::Date;
}

Text SheetCells::text(Place place)
{
    const auto held_value = value(place);
    const auto* const number = std::get_if<double>(&held_value);
    return number ? number_text(*number) : std::get<Text>(held_value);
}

bool SheetCells::is_empty(Place place)
{
    check(place);
    read_formulas_anew({place.row, place.column, place.row, place.column});
    return holds_nothing(place);
}

void SheetCells::write(Place place, const CellValue& value)
{
    check(place);
    const auto* text = std::get_if<Text>(&value);
    unsettled_.push_back({place, text ? CellValue(cell_text(*text)) : value});
    ++writes_.count;
}

// Formulas come last: one whose result goes with the texts around it stays, as a template has it.
int SheetCells::clear(const Area& area)
{
    if (area.empty()) return 0;
    check({area.first_row, area.first_column});
    check({area.last_row, area.last_column});
    read_formulas_anew(area);
    std::set<Place> texts, formulas;
    for (const auto& cell : content().cells)
        if (area.contains(cell.place.row, cell.place.column) && !holds_nothing(cell.place))
            (cell.is_formula && !written_.contains(cell.place) ? formulas : texts).insert(cell.place);
    for (const auto& [place, value] : written_)
        if (area.contains(place.row, place.column) && !is_nothing(value)) texts.insert(place);
    erase(texts);
    if (!formulas.empty()) read_formulas_anew(area);
    std::erase_if(formulas, [this](Place place) { return holds_nothing(place); });
    erase(formulas);
    return static_cast<int>(texts.size() + formulas.size());
}

void SheetCells::erase(const std::set<Place>& places)
{
    for (const auto place : places) {
        put(place, Text());
        merged_texts_.forget({place.row, place.column});
    }
    if (!places.empty()) ++writes_.count;
}

// An empty text for an empty cell changes nothing, covered or not: only the other places need to be looked at.
void SheetCells::settle()
{
    if (unsettled_.empty()) return;
    std::set<Place> unknown, filled;
    for (const auto& [place, value] : unsettled_) {
        if (!is_nothing(value)) filled.insert(place);
        const bool may_matter = filled.contains(place) || !holds_nothing(place);
        if (may_matter && !merged_.contains(place)) unknown.insert(place);
    }
    for (const auto& area : rectangles({unknown.begin(), unknown.end()})) find_merged(area);
    find_numeric_parts();
    for (auto& [place, value] : std::exchange(unsettled_, {})) {
        const auto known = merged_.find(place);
        if (known != merged_.end() && known->second.cells() > 1) write_to_merged(known->second, place, value);
        else if (!is_nothing(value) || !holds_nothing(place)) put(place, std::move(value));
    }
}

void SheetCells::write_to_merged(const Area& merged, Place place, const CellValue& value)
{
    const ooxml::Place first{merged.first_row, merged.first_column};
    const auto held = raw_value({first.row, first.column});
    const auto outcome = merged_texts_.write(first, {place.row, place.column}, value, held);
    if (outcome.splits) {
        split_.push_back(merged);
        for (auto& [one, its_area] : merged_)
            if (split_.back().contains(one.row, one.column)) its_area = {one.row, one.column, one.row, one.column};
    }
    for (const auto& [to, its_value] : outcome.writes)
        if (!is_nothing(its_value) || !holds_nothing({to.row, to.column})) put({to.row, to.column}, its_value);
}

// A text that reads as a number may come to stand in the first cell of a merged range.
void SheetCells::find_numeric_parts()
{
    std::set<Place> unknown;
    for (const auto& [place, value] : unsettled_) {
        const auto* text = std::get_if<Text>(&value);
        if (!text || !plain_number(*text)) continue;
        const auto& merged = merged_.at(place);
        for (const auto target : {place, Place{merged.first_row, merged.first_column}})
            if (!is_numeric_.contains(target)) unknown.insert(target);
    }
    if (unknown.empty()) return;
    const auto areas = rectangles({unknown.begin(), unknown.end()});
    const auto parts = file_.call([&](OpenWorkbook& file) { return file.numeric_parts(sheet_, areas); });
    for (const auto place : unknown)
        is_numeric_[place] =
            std::ranges::any_of(parts, [place](const Area& part) { return part.contains(place.row, place.column); });
}

// Most rectangles touch no merged range at all; one that does is halved until that is true, or until it is one cell.
void SheetCells::find_merged(const Area& area)
{
    const auto merged = file_.call([&](OpenWorkbook& file) { return file.merged_around(sheet_, area); });
    if (merged.area == area && !merged.has_merged) {
        for (int row = area.first_row; row <= area.last_row; ++row)
            for (int column = area.first_column; column <= area.last_column; ++column)
                merged_[{row, column}] = {row, column, row, column};
        return;
    }
    if (area.rows() == 1 && area.columns() == 1) {
        merged_[{area.first_row, area.first_column}] = merged.area;
        return;
    }
    Area front = area, back = area;
    if (area.rows() >= area.columns()) {
        front.last_row = area.first_row + area.rows() / 2 - 1;
        back.first_row = front.last_row + 1;
    } else {
        front.last_column = area.first_column + area.columns() / 2 - 1;
        back.first_column = front.last_column + 1;
    }
    find_merged(front);
    find_merged(back);
}

void SheetCells::put(Place place, CellValue value)
{
    const auto numeric = is_numeric_.find(place);
    const auto* text = std::get_if<Text>(&value);
    if (text && numeric != is_numeric_.end() && numeric->second)
        if (const auto number = plain_number(*text)) value = *number;
    written_.insert_or_assign(place, std::move(value));
    unsent_.insert(place);
}

bool SheetCells::send()
{
    settle();
    if (unsent_.empty()) return false;
    const auto has_note = [this](Place place) {
        return std::ranges::any_of(content().notes,
                                   [&](const Area& area) { return area.contains(place.row, place.column); });
    };
    std::vector<Place> alone, together;
    for (const auto place : unsent_) (has_note(place) ? alone : together).push_back(place);
    std::vector<Block> blocks;
    for (const auto& area : rectangles(together)) {
        auto& block = blocks.emplace_back(Block{area, {}});
        for (int row = area.first_row; row <= area.last_row; ++row)
            for (int column = area.first_column; column <= area.last_column; ++column)
                block.values.push_back(written_.at({row, column}));
    }
    file_.call([&](OpenWorkbook& file) {
        for (const auto& area : split_) file.split_merged(sheet_, area);
        for (const auto place : alone)
            naming_cell(place, [&] { file.write_cell(sheet_, place.row, place.column, written_.at(place)); });
        for (const auto& block : blocks)
            naming_cell({block.area.first_row, block.area.first_column}, [&] { file.write(sheet_, block); });
    });
    unsent_.clear();
    split_.clear();
    return true;
}

bool SheetCells::fits(int rows, int columns)
{
    settle();
    const auto is_inside = [&](Place place) { return place.row <= rows && place.column <= columns; };
    return std::ranges::all_of(
               content().cells,
               [&](const HeldCell& cell) { return is_inside(cell.place) || holds_nothing(cell.place); }) &&
           std::ranges::all_of(written_,
                               [&](const auto& one) { return is_inside(one.first) || is_nothing(one.second); });
}

} // namespace tarvik::libreoffice

#include "tests/engines/calculation/cells_in_memory.h"

#include <algorithm>

namespace tarvik::test {

void CellsInMemory::set(std::string_view place, Value value, int sheet)
{
    cells(sheet)[ooxml::parse_place(place).value()] = {std::move(value), nullptr, true};
    ++revision_;
}

void CellsInMemory::set_formula(std::string_view place, std::string_view formula, int sheet)
{
    const auto at = ooxml::parse_place(place).value();
    cells(sheet)[at] = {{}, calculation::parse(formula, at), false};
}

Value CellsInMemory::result(const CellAddress& wanted)
{
    std::vector<CellAddress> waiting{wanted};
    std::set<std::pair<int, Place>> begun;
    while (!waiting.empty()) {
        const CellAddress at = waiting.back();
        Cell& held = cells(at.sheet)[at.place];
        if (!held.formula || held.is_calculated) {
            waiting.pop_back();
            continue;
        }
        try {
            held.value = calculator_.calculate(*held.formula, at);
            held.is_calculated = true;
        } catch (const calculation::NotYetCalculated& needs) {
            begun.emplace(at.sheet, at.place);
            held.is_calculated = std::ranges::any_of(needs.cells, [&](const CellAddress& cell) {
                return begun.contains({cell.sheet, cell.place});
            });
            held.value = calculation::CellError::Reference; // of a cycle
            if (!held.is_calculated) waiting.insert(waiting.end(), needs.cells.begin(), needs.cells.end());
        }
    }
    return value(wanted);
}

Value CellsInMemory::calculate(std::string_view formula, std::string_view at, bool is_array)
{
    const CellAddress cell{1, ooxml::parse_place(at).value()};
    return calculator_.calculate(*calculation::parse(formula, cell.place), cell, {.is_array = is_array});
}

Value CellsInMemory::value(const CellAddress& cell) const
{
    const auto found = cells(cell.sheet).find(cell.place);
    if (found == cells(cell.sheet).end()) return {};
    if (!found->second.is_calculated) throw calculation::NotYetCalculated{{cell}};
    return found->second.value;
}

void CellsInMemory::visit(int sheet, const Range& area, const Visitor& visitor) const
{
    calculation::NotYetCalculated missing;
    for (const bool is_visit : {false, true}) {
        for (auto cell = cells(sheet).lower_bound(area.first);
             cell != cells(sheet).end() && cell->first.row <= area.last.row; ++cell) {
            if (!area.contains(cell->first)) continue;
            if (is_visit) {
                visitor(cell->first, cell->second.value);
            } else if (!cell->second.is_calculated) {
                missing.cells.push_back({sheet, cell->first});
            }
        }
        if (!missing.cells.empty()) throw missing;
    }
}

Place CellsInMemory::extent(int sheet) const
{
    Place end;
    for (const auto& [place, cell] : cells(sheet))
        end = {std::max(end.row, place.row), std::max(end.column, place.column)};
    return end;
}

std::optional<int> CellsInMemory::find_sheet(TextView name) const
{
    for (std::size_t i = 0; i < sheets_.size(); ++i)
        if (lower(TextView(sheets_[i])) == name) return static_cast<int>(i) + 1;
    return std::nullopt;
}

std::shared_ptr<const calculation::Formula> CellsInMemory::find_name(TextView name, int) const
{
    const auto found = names_.find(name.str());
    return found == names_.end() ? nullptr : found->second;
}

const calculation::Table* CellsInMemory::find_table(TextView name) const
{
    const auto found = tables.find(name.str());
    return found == tables.end() ? nullptr : &found->second;
}

const calculation::Table* CellsInMemory::find_table_at(const CellAddress& cell) const
{
    for (const auto& [name, table] : tables)
        if (table.sheet == cell.sheet && table.range.contains(cell.place)) return &table;
    return nullptr;
}

std::shared_ptr<const calculation::Formula> CellsInMemory::formula(const CellAddress& cell) const
{
    const auto found = cells(cell.sheet).find(cell.place);
    return found == cells(cell.sheet).end() ? nullptr : found->second.formula;
}

} // namespace tarvik::test

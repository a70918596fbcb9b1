#include "office/spreadsheets/formula_groups.h"

#include "office/packages/xml_part.h"
#include "office/spreadsheets/formula_shift.h"

namespace tarvik::ooxml {

namespace {

bool drop_result(pugi::xml_node cell)
{
    bool had_one = cell.remove_attribute("t");
    for (const char* name : {"v", "is"}) {
        if (const auto child = child_named(cell, name)) {
            remove_element(cell, child);
            had_one = true;
        }
    }
    return had_one;
}

} // namespace

FormulaGroups::FormulaGroups(const SheetCells& cells) : cells_(cells)
{
    std::map<std::string, Place> masters; // by the group's number, which a later group may use again
    cells_.visit_formulas([&](Place place, pugi::xml_node cell) {
        const auto formula = child_named(cell, "f");
        formula_cells_.push_back(place);
        const std::string_view kind = formula.attribute("t").value();
        if (kind == "shared") add_shared(place, formula, masters);
        if (kind != "array" && kind != "dataTable") return;
        const auto range = parse_range(attribute_text(formula, "ref"));
        if (range && range->first != range->last) filled_.push_back(*range);
    });
}

void FormulaGroups::add_shared(Place place, pugi::xml_node formula, std::map<std::string, Place>& masters)
{
    auto number = attribute_text(formula, "si");
    auto text = element_text(formula);
    const auto master = masters.find(number);
    if (!text.empty() && formula.attribute("ref")) {
        masters.insert_or_assign(std::move(number), place);
        shared_[place].formula = std::move(text);
    } else if (text.empty() && master != masters.end()) {
        shared_[master->second].others.push_back(place);
    }
}

bool FormulaGroups::fills(Place place) const noexcept
{
    return std::any_of(filled_.begin(), filled_.end(), [&](const Range& range) { return range.contains(place); });
}

void FormulaGroups::release(const Range& overwritten)
{
    for (const auto& range : filled_) {
        if (!range.overlaps(overwritten) || overwritten.contains(range)) continue;
        throw Damage(U"单元格区域 " + from_utf8(range_name(range)) +
                     U" 由一个数组公式或模拟运算表填写，不能只改其中一部分。");
    }
    std::erase_if(filled_, [&](const Range& range) { return overwritten.contains(range); });
    const auto behind = shared_.upper_bound(overwritten.last);
    for (auto group = shared_.lower_bound(overwritten.first); group != behind;) {
        const auto& [master, shared] = *group;
        if (!overwritten.contains(master)) {
            ++group;
            continue;
        }
        for (const auto& place : shared.others) {
            if (!overwritten.contains(place)) tell_formula(place, master, shared);
        }
        group = shared_.erase(group);
    }
}

void FormulaGroups::tell_formula(Place place, Place master, const Shared& shared)
{
    auto formula = child_named(cells_.find(place), "f");
    // It may have been overwritten itself meanwhile.
    if (std::string_view(formula.attribute("t").value()) != "shared" || !element_text(formula).empty()) return;
    for (const char* name : {"t", "ref", "si"}) formula.remove_attribute(name);
    set_raw_text(formula,
                 escaped(shifted_formula(shared.formula, place.row - master.row, place.column - master.column)));
}

bool FormulaGroups::drop_results()
{
    bool had_any = false;
    for (const auto& place : formula_cells_) {
        const auto cell = cells_.find(place);
        if (child_named(cell, "f")) had_any = drop_result(cell) || had_any;
    }
    for (const auto& range : filled_) {
        cells_.visit(range, [&had_any](Place, pugi::xml_node cell) { had_any = drop_result(cell) || had_any; });
    }
    return had_any;
}

} // namespace tarvik::ooxml

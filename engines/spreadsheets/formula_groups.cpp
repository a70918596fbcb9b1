#include "engines/spreadsheets/formula_groups.h"

#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/formula_shift.h"

namespace tarvik::ooxml {

namespace {

constexpr long long most_groups = 1LL << 30U; // whatever number the part gives one

} // namespace

FormulaElement::FormulaElement(pugi::xml_node cell) : node(child_named(cell, "f")), text(element_text(node))
{
    const std::string_view type = node.attribute("t").value();
    kind = type == "shared" ? Shared : type == "array" ? Array : type == "dataTable" ? DataTable : Usual;
    has_range = node.attribute("ref");
    if (kind == Shared) group = attribute_text(node, "si");
    if (kind == Array || kind == DataTable) filled = parse_range(attribute_text(node, "ref"));
}

FormulaGroups::FormulaGroups(const SheetCells& cells) : cells_(cells)
{
    std::map<std::string, Place> masters; // by the groups
    cells_.visit_formulas([&](Place place, pugi::xml_node cell) {
        FormulaElement formula(cell);
        if (formula.filled && formula.filled->first != formula.filled->last) filled_ranges_.push_back(*formula.filled);
        if (formula.kind == FormulaElement::Shared) add_shared(place, std::move(formula), masters);
    });
    filled_ = RangeSet(filled_ranges_);
}

void FormulaGroups::add_shared(Place place, FormulaElement formula, std::map<std::string, Place>& masters)
{
    last_number_ = std::max(last_number_, std::min(formula.node.attribute("si").as_llong(), most_groups));
    const auto master = masters.find(formula.group);
    if (formula.is_master()) {
        masters.insert_or_assign(std::move(formula.group), place);
        shared_[place].formula = std::move(formula.text);
    } else if (formula.text.empty() && master != masters.end()) {
        shared_[master->second].others.push_back(place);
    }
}

std::vector<Range> FormulaGroups::fillings(const std::vector<Place>& cells) const
{
    std::vector<Range> met;
    for (const auto place : cells) {
        const auto* range = filled_.find(place);
        if (range && std::ranges::find(met, *range) == met.end()) met.push_back(*range);
    }
    return met;
}

void FormulaGroups::refuse_parts(const Range& area, const std::vector<Place>& cells) const
{
    for (const auto& range : fillings(cells)) {
        if (area.contains(range)) continue;
        throw Damage(U"单元格区域 " + from_utf8(range_name(range)) +
                     U" 由一个数组公式或模拟运算表填写，不能只改其中一部分。");
    }
}

void FormulaGroups::release(const Range& area, const std::vector<Place>& cells)
{
    refuse_parts(area, cells);
    auto pieces = pieces_left(cells);
    if (!fillings(cells).empty()) {
        std::erase_if(filled_ranges_, [&](const Range& range) { return area.contains(range); });
        filled_ = RangeSet(filled_ranges_);
    }
    for (auto& piece : pieces) share_anew(piece.master, std::move(piece.cells));
    for (const auto place : cells) shared_.erase(place);
}

// What is left of the groups whose formula is stated by one of the cells. A group's first cell must be its upper left
// one, so cells that lie further left make a piece of their own.
std::vector<FormulaGroups::Piece> FormulaGroups::pieces_left(const std::vector<Place>& overwritten) const
{
    constexpr std::size_t most_pieces = 1000, most_bytes = 8U << 20U; // each states the formula once more
    std::vector<Piece> pieces;
    std::size_t bytes = 0;
    for (const auto master : overwritten) {
        const auto group = shared_.find(master);
        if (group == shared_.end()) continue;
        std::vector<Place> left;
        for (const auto place : group->second.others)
            if (!std::binary_search(overwritten.begin(), overwritten.end(), place) && still_shares(place))
                left.push_back(place);
        while (!left.empty()) {
            const auto is_right = [first = left.front()](Place place) { return place.column >= first.column; };
            const auto end = std::stable_partition(left.begin(), left.end(), is_right);
            pieces.push_back({master, {left.begin(), end}});
            left.erase(left.begin(), end);
            bytes += group->second.formula.size();
            if (pieces.size() > most_pieces || bytes > most_bytes)
                throw Damage(U"这些单元格的公式由过多的单元格共用，不能改写。");
        }
    }
    return pieces;
}

// A cell of a group may have been overwritten meanwhile.
bool FormulaGroups::still_shares(Place place) const
{
    const FormulaElement formula(cells_.find(place));
    return formula.kind == FormulaElement::Shared && formula.text.empty();
}

// The first of the cells states from now on what the master stated.
void FormulaGroups::share_anew(Place master, std::vector<Place> cells)
{
    const auto first = cells.front();
    auto formula = child_named(cells_.find(first), "f");
    auto text = shifted_formula(shared_.at(master).formula, first.row - master.row, first.column - master.column);
    set_raw_text(formula, escaped(text));
    if (cells.size() == 1) {
        for (const char* name : {"t", "ref", "si"}) formula.remove_attribute(name);
        return;
    }
    Range range{first, first};
    const auto number = std::to_string(++last_number_);
    for (const auto place : cells) {
        range.include(place);
        set_attribute(child_named(cells_.find(place), "f"), "si", number);
    }
    set_attribute(formula, "ref", range_name(range));
    cells.erase(cells.begin());
    shared_.insert_or_assign(first, Shared{std::move(text), std::move(cells)});
}

} // namespace tarvik::ooxml

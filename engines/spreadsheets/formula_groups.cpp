#include "engines/spreadsheets/formula_groups.h"

#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/calculation/tokens.h"

namespace tarvik::ooxml {

namespace {

std::string shifted_corner(std::string_view word, int rows, int columns)
{
    const auto corner = calculation::parse_corner(word);
    if (!corner) return std::string(word);
    std::string shifted;
    if (corner->column) {
        if (corner->is_column_fixed) shifted += '$';
        shifted +=
            column_name(wrapped(*corner->column + (corner->is_column_fixed ? 0 : columns), last_column_of_sheet));
    }
    if (corner->row) {
        if (corner->is_row_fixed) shifted += '$';
        shifted += std::to_string(wrapped(*corner->row + (corner->is_row_fixed ? 0 : rows), last_row_of_sheet));
    }
    return shifted;
}

// The formula as it reads when its cell moves by so many rows and columns: relative references move along, absolute
// ones stay. A reference that leaves the sheet comes back in at the other side.
std::string shifted_formula(std::string_view formula, int rows, int columns)
{
    using calculation::TokenKind;
    std::string shifted;
    std::size_t copied = 0;
    calculation::Tokens tokens(formula);
    for (auto token = tokens.next(); token.kind != TokenKind::End; token = tokens.next()) {
        if (token.kind == TokenKind::Bad) break; // the rest is no formula
        if (token.kind != TokenKind::Cell && token.kind != TokenKind::Lines) continue;
        const auto start = static_cast<std::size_t>(token.text.data() - formula.data());
        shifted += formula.substr(copied, start - copied);
        copied = start + token.text.size();
        const auto colon = std::min(token.text.find(':'), token.text.size());
        shifted += shifted_corner(token.text.substr(0, colon), rows, columns);
        if (token.kind == TokenKind::Lines)
            shifted.append(":").append(shifted_corner(token.text.substr(colon + 1), rows, columns));
    }
    return shifted += formula.substr(copied);
}

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
        if (formula.kind != FormulaElement::Shared) return;
        if (formula.is_master()) {
            masters.insert_or_assign(formula.group, place);
            shared_[place].formula = std::move(formula.text);
        } else if (const auto master = masters.find(formula.group); formula.text.empty() && master != masters.end()) {
            shared_[master->second].others.push_back(place);
        }
    });
    filled_ = RangeSet(filled_ranges_);
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
    constexpr std::size_t most_bytes = 32U << 20U;
    refuse_parts(area, cells);
    std::vector<std::pair<Place, Place>> left; // with the cells that stated their formulas
    std::size_t bytes = 0;
    for (const auto master : cells) {
        const auto group = shared_.find(master);
        if (group == shared_.end()) continue;
        for (const auto place : group->second.others) {
            if (std::binary_search(cells.begin(), cells.end(), place) || !still_shares(place)) continue;
            left.emplace_back(place, master);
            bytes += group->second.formula.size();
        }
        if (bytes > most_bytes) throw Damage(U"这些单元格的公式由过多的单元格共用，不能改写。");
    }
    if (!fillings(cells).empty()) {
        std::erase_if(filled_ranges_, [&](const Range& range) { return area.contains(range); });
        filled_ = RangeSet(filled_ranges_);
    }
    for (const auto& [place, master] : left) {
        auto formula = child_named(cells_.find(place), "f");
        set_raw_text(formula, escaped(shifted_formula(shared_.at(master).formula, place.row - master.row,
                                                      place.column - master.column)));
        for (const char* name : {"t", "ref", "si"}) formula.remove_attribute(name);
    }
    for (const auto place : cells) shared_.erase(place);
}

// A cell of a group may have been overwritten meanwhile.
bool FormulaGroups::still_shares(Place place) const
{
    const FormulaElement formula(cells_.find(place));
    return formula.kind == FormulaElement::Shared && formula.text.empty();
}

} // namespace tarvik::ooxml

#include "engines/spreadsheets/formula_element.h"

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

} // namespace

FormulaElement::FormulaElement(pugi::xml_node cell) : node(child_named(cell, "f")), text(element_text(node))
{
    const std::string_view type = node.attribute("t").value();
    kind = type == "shared" ? Shared : type == "array" ? Array : type == "dataTable" ? DataTable : Usual;
    has_range = node.attribute("ref");
    if (kind == Shared) group = attribute_text(node, "si");
    if (kind == Array || kind == DataTable) filled = parse_range(attribute_text(node, "ref"));
}

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

void FormulaElement::state(const std::string& formula)
{
    set_raw_text(node, escaped(formula));
    for (const char* name : {"t", "ref", "si"}) node.remove_attribute(name);
}

} // namespace tarvik::ooxml

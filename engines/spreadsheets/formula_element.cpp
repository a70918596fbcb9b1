#include "engines/spreadsheets/formula_element.h"

#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/calculation/tokens.h"

namespace tarvik::ooxml {

namespace {

std::string corner_text(const calculation::Corner& corner)
{
    std::string text;
    if (corner.column) text += (corner.is_column_fixed ? "$" : "") + column_name(*corner.column);
    if (corner.row) text += (corner.is_row_fixed ? "$" : "") + std::to_string(*corner.row);
    return text;
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
        shifted += corner_text(token.first.moved(rows, columns));
        if (token.kind == TokenKind::Lines) shifted += ":" + corner_text(token.last.moved(rows, columns));
    }
    return shifted += formula.substr(copied);
}

void FormulaElement::state(const std::string& formula)
{
    set_raw_text(node, escaped(formula));
    for (const char* name : {"t", "ref", "si"}) node.remove_attribute(name);
}

} // namespace tarvik::ooxml

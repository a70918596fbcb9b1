#include "fuzz/target.h"

#include "engines/spreadsheets/calculation/tokens.h"
#include "engines/spreadsheets/workbook_model.h"
#include "tests/engines/spreadsheets/workbook_parts.h"

#include <algorithm>
#include <cmath>

namespace tarvik::fuzz {

namespace {

constexpr std::size_t longest_text = 32'767;
constexpr std::size_t longest_input = 2'000;
constexpr std::size_t most_formulas = 20;

// The pieces that are taken apart, and what lies between them, are all that there is.
void require_whole(std::string_view formula)
{
    calculation::Tokens tokens(formula);
    const char* end = formula.data();
    for (auto token = tokens.next(); token.kind != calculation::TokenKind::End; token = tokens.next()) {
        require(!token.text.empty() && token.text.data() >= end, "a piece of a formula");
        end = token.text.data() + token.text.size();
    }
    require(end <= formula.data() + formula.size(), "the end of a formula");
}

void require_sound(const calculation::Value& value)
{
    if (const auto* const number = std::get_if<double>(&value)) require(std::isfinite(*number), "a number");
    if (const auto* const text = std::get_if<Text>(&value)) require(text->size() <= longest_text, "a text's length");
    require(!std::holds_alternative<std::monostate>(value), "a result that is none");
}

std::string cell(const std::string& place, const std::string& type, const std::string& value)
{
    return "<c r=\"" + place + "\"" + type + ">" + value + "</c>";
}

// The first sheet's rows behind column A, of which the first few hold something, and what formulas call by name.
test::Parts sample(const std::vector<std::string>& formulas)
{
    const std::string others[] = {cell("B1", "", "<v>1</v>") + cell("C1", "", "<v>43835.75</v>"),
                                  cell("B2", "", "<v>-2.5</v>") + cell("C2", " t=\"inlineStr\"", "<is><t>a*</t></is>"),
                                  cell("B3", " t=\"inlineStr\"", "<is><t>3</t></is>") +
                                      cell("C3", " t=\"e\"", "<v>#N/A</v>"),
                                  cell("B4", " t=\"b\"", "<v>1</v>")};
    std::string rows;
    for (std::size_t i = 0; i < std::max(formulas.size(), std::size(others)); ++i) {
        const auto row = std::to_string(i + 1);
        rows += "<row r=\"" + row + "\">";
        if (i < formulas.size()) rows += cell("A" + row, "", "<f>" + ooxml::escaped(formulas[i]) + "</f>");
        rows += (i < std::size(others) ? others[i] : "") + "</row>";
    }
    auto parts = test::simple_parts(rows + "<row r=\"50\">" + cell("D50", "", "<v>7</v>") + "</row>");
    const std::string book = "xl/workbook.xml";
    test::edit_part(parts, book, "第一张\"", "Sheet1\"");
    test::edit_part(parts, book, "第二张", "Data");
    test::edit_part(parts, book, "</definedNames>",
                    "<definedName name=\"name\">Data!$B$1:$B$3</definedName>"
                    "<definedName name=\"self\">self+name</definedName></definedNames>");
    test::set_part(parts, "xl/worksheets/_rels/sheet1.xml.rels",
                   "<Relationships><Relationship Id=\"r\" Type=\"t/table\" Target=\"../t.xml\"/></Relationships>");
    test::set_part(parts, "xl/t.xml",
                   "<table ref=\"B1:C4\" displayName=\"Table1\" totalsRowCount=\"1\"><tableColumns>"
                   "<tableColumn name=\"b\"/><tableColumn name=\"c\"/></tableColumns></table>");
    return parts;
}

} // namespace

} // namespace tarvik::fuzz

/// The lines are formulas of column A, from the first row on, over a few cells that stand there already. Whatever they
/// are, each has a result or a reason for having none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tarvik;
    using namespace tarvik::fuzz;
    auto rest = bytes_of_input(data, std::min(size, longest_input));
    std::vector<std::string> formulas;
    while (!rest.empty() && formulas.size() < most_formulas) {
        const auto line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        require_whole(line);
        auto& formula = formulas.emplace_back(to_utf8(from_utf8(line)));
        std::erase_if(formula, [](char c) { return c >= 0 && c < ' '; }); // no part holds those
    }
    ooxml::WorkbookModel model(std::make_shared<const ooxml::Package>(test::make_package(sample(formulas), false)));
    auto& recalculation = model.recalculation();
    recalculation.update_all();
    for (ooxml::FormulaIndex::Number number = 0; number < recalculation.index().size(); ++number) {
        const auto& formula = recalculation.index()[number];
        calculation::visit_areas(*formula.formula, {formula.sheet, formula.place()}, recalculation.index().names(),
                                 [](const calculation::Area& area) {
                                     const auto& [first, last] = area.range;
                                     require(ooxml::is_on_sheet(first) && ooxml::is_on_sheet(last) && !(last < first),
                                             "an area");
                                 });
        if (!recalculation.failed().contains(number)) require_sound(model.sheet(formula.sheet).value(formula.place()));
    }
    return 0;
}

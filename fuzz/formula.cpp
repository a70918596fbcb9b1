#include "fuzz/target.h"

#include "tests/engines/calculation/cells_in_memory.h"

#include "engines/spreadsheets/calculation/tokens.h"

#include <algorithm>
#include <cmath>

namespace tarvik::fuzz {

namespace {

constexpr std::size_t longest_text = 32'767;
constexpr std::size_t longest_input = 2'000;
constexpr int most_formulas = 20;

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

} // namespace

} // namespace tarvik::fuzz

/// The lines are formulas of column A, from the first row on, over a few cells that stand there already. Whatever they
/// are, each has a result or a reason for having none.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tarvik;
    using namespace tarvik::fuzz;
    auto rest = bytes_of_input(data, std::min(size, longest_input));
    test::CellsInMemory cells({U"Sheet1", U"Data"});
    const std::vector<std::pair<std::string_view, calculation::Value>> values{
        {"B1", 1.0},
        {"B2", -2.5},
        {"B3", Text(U"3")},
        {"B4", true},
        {"C1", 43835.75},
        {"C2", Text(U"a*")},
        {"C3", calculation::CellError::NotAvailable},
        {"D50", 7.0}};
    for (const auto& [place, value] : values)
        for (const int sheet : {1, 2}) cells.set(place, value, sheet);
    cells.set_name(U"name", "Data!$B$1:$B$3");
    cells.set_name(U"self", "self+name");
    cells.tables[U"table1"] = {1, {{1, 2}, {4, 3}}, 1, 1, {U"b", U"c"}};
    int row = 1;
    for (; !rest.empty() && row <= most_formulas; ++row) {
        const auto line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(line.size() + 1, rest.size()));
        require_whole(line);
        cells.set_formula("A" + std::to_string(row), line);
        calculation::visit_areas(
            *cells.formula({1, {row, 1}}), {1, {row, 1}}, cells, [](int, const calculation::Range& area) {
                require(ooxml::is_on_sheet(area.first) && ooxml::is_on_sheet(area.last) && !(area.last < area.first),
                        "an area");
            });
    }
    for (int formula = 1; formula < row; ++formula) {
        try {
            require_sound(cells.result({1, {formula, 1}}));
        } catch (const calculation::CannotCalculate&) { // NOLINT(bugprone-empty-catch): that is one of the two
        }
    }
    return 0;
}

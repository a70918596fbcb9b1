#include "office/spreadsheets/sheet_part.h"

namespace tarvik::ooxml {

namespace {

void check(Place place)
{
    if (is_on_sheet(place)) return;
    throw Damage(U"工作表没有第 " + number_text(place.row) + U" 行、第 " + number_text(place.column) +
                 U" 列的单元格。");
}

} // namespace

SheetPart::SheetPart(std::string name, const std::string& contents, CellValues& values, std::vector<Range> headers)
    : part_(std::move(name), contents, "worksheet"), cells_(part_.root()), merged_(part_.root()), values_(values),
      headers_(std::move(headers))
{
}

FormulaGroups& SheetPart::formulas() const
{
    if (!formulas_) formulas_.emplace(cells_);
    return *formulas_;
}

Text SheetPart::text(Place place) const
{
    check(place);
    const auto cell = cells_.find(place);
    return cell ? values_.text(cell) : Text();
}

std::optional<double> SheetPart::number(Place place) const
{
    check(place);
    const auto cell = cells_.find(place);
    return cell ? values_.number(cell) : std::nullopt;
}

bool SheetPart::is_empty(Place place) const
{
    check(place);
    const auto cell = cells_.find(place);
    return (!cell || values_.is_empty(cell)) && !formulas().fills(place);
}

bool SheetPart::write(Place place, TextView text)
{
    check(place);
    if (text.empty()) {
        if (merged_.first_cell(place) != place || is_empty(place)) return false;
        values_.erase(cell_to_overwrite(place));
    } else {
        place = merged_.first_cell(place);
        if (is_header(place) && this->text(place) == text) return false;
        values_.write_text(cell_to_overwrite(place), text);
    }
    part_.changed = true;
    return true;
}

bool SheetPart::write(Place place, double number)
{
    check(place);
    values_.write_number(cell_to_overwrite(merged_.first_cell(place)), number);
    part_.changed = true;
    return true;
}

pugi::xml_node SheetPart::cell_to_overwrite(Place place)
{
    refuse_header(place);
    formulas().release({place, place});
    return cells_.ensure(place);
}

bool SheetPart::is_header(Place place) const noexcept
{
    return std::any_of(headers_.begin(), headers_.end(),
                       [place](const Range& header) { return header.contains(place); });
}

void SheetPart::refuse_header(Place place) const
{
    if (is_header(place)) throw Damage(U"单元格 " + from_utf8(place_name(place)) + U" 是表格的列标题，不能改写。");
}

int SheetPart::clear(const Range& range)
{
    if (range.first.row > range.last.row || range.first.column > range.last.column) return 0;
    check(range.first);
    check(range.last);
    std::vector<pugi::xml_node> held;
    cells_.visit(range, [&](Place place, pugi::xml_node cell) {
        if (values_.is_empty(cell) && !formulas().fills(place)) return;
        refuse_header(place);
        held.push_back(cell);
    });
    if (held.empty()) return 0;
    formulas().release(range);
    for (const auto cell : held) values_.erase(cell);
    part_.changed = true;
    return static_cast<int>(held.size());
}

void SheetPart::drop_results()
{
    if (formulas().drop_results()) part_.changed = true;
}

bool may_have_formulas(std::string_view contents) noexcept
{
    // "<f>", "<x:f ca='1'>" and the like; "</f" does not matter.
    for (auto at = contents.find('f'); at != std::string_view::npos; at = contents.find('f', at + 1)) {
        if (at == 0 || at + 1 >= contents.size()) continue;
        const char before = contents[at - 1];
        const char behind = contents[at + 1];
        const bool begins = before == '<' || before == ':';
        if (begins && (behind == '>' || behind == '/' || behind == ' ' || (behind >= '\t' && behind <= '\r')))
            return true;
    }
    return false;
}

} // namespace tarvik::ooxml

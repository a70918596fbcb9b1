#include "engines/spreadsheets/sheet_part.h"

namespace tarvik::ooxml {

namespace {

void check(Place place)
{
    if (is_on_sheet(place)) return;
    throw Damage(U"工作表没有第 " + number_text(place.row) + U" 行、第 " + number_text(place.column) +
                 U" 列的单元格。");
}

RangeSet merged_ranges(pugi::xml_node worksheet)
{
    std::vector<Range> ranges;
    for (const auto node : child_named(worksheet, "mergeCells").children()) {
        if (const auto range = parse_range(attribute_text(node, "ref"))) ranges.push_back(*range);
    }
    return RangeSet(ranges);
}

} // namespace

SheetPart::SheetPart(std::string name, const std::string& contents, CellValues& values, ProtectedAreas areas)
    : part_(std::move(name), contents, "worksheet", Vocabulary::Spreadsheet), cells_(part_.root()), formulas_(cells_),
      merged_(merged_ranges(part_.root())), values_(values), areas_(std::move(areas))
{
    cells_.visit(whole_sheet, [&values](Place, pugi::xml_node cell) { values.check(cell); });
}

// Of the merged range that the cell lies in; a cell outside of every range is its own first cell.
Place SheetPart::first_of_merged(Place place) const noexcept
{
    const auto* range = merged_.find(place);
    return range ? range->first : place;
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
    return (!cell || values_.is_empty(cell)) && !formulas_.fills(place);
}

bool SheetPart::write(Place place, TextView text)
{
    check(place);
    if (text.empty()) {
        if (first_of_merged(place) != place || is_empty(place)) return false;
        values_.erase(cell_to_overwrite(place));
    } else {
        place = first_of_merged(place);
        if (areas_.headers.contains(place) && this->text(place) == text) return false;
        values_.write_text(cell_to_overwrite(place), text);
    }
    part_.changed = true;
    return true;
}

bool SheetPart::write(Place place, double number)
{
    check(place);
    values_.write_number(cell_to_overwrite(first_of_merged(place)), number);
    part_.changed = true;
    return true;
}

pugi::xml_node SheetPart::cell_to_overwrite(Place place)
{
    refuse_protected(place);
    formulas_.release({place, place});
    return cells_.ensure(place);
}

void SheetPart::refuse_protected(Place place) const
{
    const auto refused = [place](const char32_t* why) {
        return Damage(U"单元格 " + from_utf8(place_name(place)) + why);
    };
    if (areas_.headers.contains(place)) throw refused(U" 是表格的列标题，不能改写。");
    if (areas_.pivots.contains(place)) throw refused(U" 属于数据透视表，不能改写。");
}

int SheetPart::clear(const Range& range)
{
    if (range.first.row > range.last.row || range.first.column > range.last.column) return 0;
    check(range.first);
    check(range.last);
    std::vector<pugi::xml_node> held;
    cells_.visit(range, [&](Place place, pugi::xml_node cell) {
        if (values_.is_empty(cell) && !formulas_.fills(place)) return;
        refuse_protected(place);
        held.push_back(cell);
    });
    if (held.empty()) return 0;
    formulas_.release(range);
    for (const auto cell : held) values_.erase(cell);
    part_.changed = true;
    return static_cast<int>(held.size());
}

const XmlPart& SheetPart::part() const
{
    cells_.take_out_grown_rows();
    return part_;
}

const XmlPart& SheetPart::settle()
{
    cells_.lay_down_grown_rows();
    return part_;
}

void SheetPart::drop_results()
{
    if (formulas_.drop_results()) part_.changed = true;
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

#include "engines/spreadsheets/workbook_names.h"

#include <algorithm>

namespace tarvik::ooxml {

WorkbookNames::WorkbookNames(const Package& package, pugi::xml_node workbook, const std::vector<Sheet>& sheets)
    : sheet_count_(static_cast<int>(sheets.size()))
{
    int number = 0;
    for (const auto& sheet : sheets) {
        sheets_.emplace(lower(sheet.title), ++number);
        read_tables(package, number, sheet.part);
    }
    read_names(workbook, sheets);
}

void WorkbookNames::read_names(pugi::xml_node workbook, const std::vector<Sheet>& sheets)
{
    for (const auto node : child_named(workbook, "definedNames").children()) {
        if (!is_named(node, "definedName")) continue;
        int sheet = 0;
        if (const auto position = node.attribute("localSheetId")) {
            const auto owner = std::ranges::find(sheets, position.as_int(-1), &Sheet::position);
            if (owner == sheets.end()) continue;
            sheet = static_cast<int>(owner - sheets.begin()) + 1;
        }
        names_.try_emplace({lower(from_utf8(attribute_text(node, "name"))), sheet},
                           calculation::parse(element_text(node), {1, 1}));
    }
}

// A damaged table is none: a formula that names it cannot be calculated.
void WorkbookNames::read_tables(const Package& package, int sheet, const std::string& part)
try {
    const Relationships relationships(package, part);
    std::set<std::string> met;
    for (const auto& one : relationships.all()) {
        if (one.kind() != "table" || !package.has(one.target) || !met.insert(part_key(one.target)).second) continue;
        const XmlPart read(one.target, package.part(one.target), "table", Vocabulary::Spreadsheet);
        const auto node = read.root();
        const auto range = parse_range(attribute_text(node, "ref"));
        if (!range) continue;
        calculation::Table table{
            sheet, *range, node.attribute("headerRowCount").as_int(1), node.attribute("totalsRowCount").as_int(0), {}};
        for (const auto column : child_named(node, "tableColumns").children())
            table.columns.push_back(from_utf8(attribute_text(column, "name")));
        if (child_named(child_named(node, "autoFilter"), "filterColumn")) filtered_.emplace_back(sheet, *range);
        auto name = attribute_text(node, "displayName");
        if (name.empty()) name = attribute_text(node, "name");
        tables_.try_emplace(lower(from_utf8(name)), std::move(table));
    }
} catch (const Damage&) { // NOLINT(bugprone-empty-catch): see above
}

std::optional<int> WorkbookNames::find_sheet(TextView name) const
{
    const auto found = sheets_.find(name.str());
    return found == sheets_.end() ? std::nullopt : std::optional(found->second);
}

calculation::FormulaPointer WorkbookNames::find_name(TextView name, int sheet) const
{
    for (const int owner : {sheet, 0}) {
        const auto found = names_.find({name.str(), owner});
        if (found != names_.end()) return found->second;
    }
    return nullptr;
}

const calculation::Table* WorkbookNames::find_table(TextView name) const
{
    const auto found = tables_.find(name.str());
    return found == tables_.end() ? nullptr : &found->second;
}

const calculation::Table* WorkbookNames::find_table_at(const calculation::CellAddress& cell) const
{
    const auto found = std::ranges::find_if(tables_, [&cell](const auto& one) {
        return one.second.sheet == cell.sheet && one.second.range.contains(cell.place);
    });
    return found == tables_.end() ? nullptr : &found->second;
}

bool WorkbookNames::is_in_filtered_table(int sheet, int row) const
{
    return std::ranges::any_of(filtered_, [=](const auto& one) {
        return one.first == sheet && row >= one.second.first.row && row <= one.second.last.row;
    });
}

} // namespace tarvik::ooxml

#include "engines/spreadsheets/workbook_model.h"

#include "engines/spreadsheets/macros.h"

#include <array>
#include <set>

namespace tarvik::ooxml {

namespace {

constexpr std::string_view plain_type = "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml";
constexpr std::string_view macro_type = "application/vnd.ms-excel.sheet.macroEnabled.main+xml";

// The name of the workbook's part, which must be what this engine can edit.
std::string find_workbook(const Package& package, const ContentTypes& types)
{
    const Relationships relationships(package, "");
    const auto* workbook = relationships.of_kind("officeDocument");
    if (!workbook) throw Damage(U"文件不是工作簿。");
    const auto type = types.of(workbook->target);
    if (type.find("sheet.binary") != std::string::npos) {
        throw Damage(U"这是二进制格式（.xlsb）的工作簿，不能处理，请另存为 .xlsx。");
    }
    const bool is_spreadsheet =
        type.find("spreadsheetml") != std::string::npos || type.find("ms-excel") != std::string::npos;
    if (!is_spreadsheet) throw Damage(U"文件不是工作簿。");
    return workbook->target;
}

bool is_on(pugi::xml_attribute attribute) noexcept
{
    const std::string_view value = attribute.value();
    return value == "1" || value == "true";
}

} // namespace

WorkbookModel::WorkbookModel(std::shared_ptr<const Package> package)
    : package_(std::move(package)), areas_(package_.original()),
      workbook_name_(find_workbook(package_.original(), package_.types())),
      relationships_(package_.original(), workbook_name_),
      workbook_(workbook_name_, package_.original().part(workbook_name_), "workbook", Vocabulary::Spreadsheet)
{
    list_sheets();
}

// Chart, dialog and macro sheets are no worksheets; those of old macro modules have no part at all.
void WorkbookModel::list_sheets()
{
    std::set<std::string> keys;
    for (const auto node : child_named(workbook_.root(), "sheets").children()) {
        const auto* relationship = relationships_.of_id(relationship_id(node));
        if (!is_named(node, "sheet") || !relationship || relationship->kind() != "worksheet") continue;
        if (!package_.original().has(relationship->target)) {
            throw Damage(U"缺少工作表“" + from_utf8(attribute_text(node, "name")) + U"”的部件。");
        }
        if (!keys.insert(part_key(relationship->target)).second) throw Damage(U"两张工作表共用一个部件。");
        sheets_.push_back({relationship->target, nullptr});
    }
    if (sheets_.empty()) throw Damage(U"工作簿里没有工作表。");
}

SheetPart& WorkbookModel::sheet(int index)
{
    if (index < 1 || index > sheet_count()) {
        throw Damage(U"工作簿里没有第 " + number_text(index) + U" 张工作表。");
    }
    load_formulas();
    return load(sheets_[static_cast<std::size_t>(index - 1)]);
}

// A change in one sheet drops the results of all, so none of those may fail later.
void WorkbookModel::load_formulas()
{
    if (has_loaded_formulas_) return;
    for (auto& sheet : sheets_) {
        if (may_have_formulas(package_.original().part(sheet.name))) load(sheet);
    }
    has_loaded_formulas_ = true;
}

SheetPart& WorkbookModel::load(Sheet& sheet)
{
    if (!values_) load_strings();
    if (!sheet.part) {
        sheet.part = std::make_unique<SheetPart>(sheet.name, package_.original().part(sheet.name), *values_,
                                                 areas_.areas_of(sheet.name));
    }
    return *sheet.part;
}

void WorkbookModel::load_strings()
{
    const auto* strings = relationships_.of_kind("sharedStrings");
    if (strings && package_.original().has(strings->target)) {
        strings_.emplace(
            XmlPart(strings->target, package_.original().part(strings->target), "sst", Vocabulary::Spreadsheet));
    }
    const bool counts_from_1904 = is_on(child_named(workbook_.root(), "workbookPr").attribute("date1904"));
    values_.emplace(strings_ ? &*strings_ : nullptr, counts_from_1904);
}

void WorkbookModel::set_format(WorkbookFormat format)
{
    const auto wanted = format == WorkbookFormat::Plain ? plain_type : macro_type;
    if (package_.types().of(workbook_name_) == wanted) return;
    package_.types().set(workbook_name_, wanted);
    if (format == WorkbookFormat::Plain) drop_macros(package_, workbook_, relationships_);
    is_unpacked_ = true;
}

void WorkbookModel::drop_results()
{
    for (auto& sheet : sheets_) {
        if (sheet.part) sheet.part->drop_results();
    }
    ask_for_calculation();
    drop_calculation_chain();
    has_new_values_ = false;
}

void WorkbookModel::ask_for_calculation()
{
    auto root = workbook_.root();
    auto calculation = child_named(root, "calcPr");
    if (is_on(calculation.attribute("fullCalcOnLoad"))) return;
    if (!calculation) {
        // The elements of a workbook have a fixed order; these are the ones that may stand before it.
        constexpr std::array<std::string_view, 10> before{
            "fileVersion",        "fileSharing", "workbookPr", "AlternateContent", "revisionPtr",
            "workbookProtection", "bookViews",   "sheets",     "functionGroups",   "externalReferences"};
        pugi::xml_node last;
        for (const auto child : root.children()) {
            const auto is_it = [child](std::string_view name) { return is_named(child, name); };
            if (std::any_of(before.begin(), before.end(), is_it) || is_it("definedNames")) last = child;
        }
        calculation = root.insert_child_after(name_like(root, "calcPr").c_str(), last);
    }
    set_attribute(calculation, "fullCalcOnLoad", "1");
    workbook_.changed = true;
}

// Only what is such a chain: the relationship may lead anywhere.
void WorkbookModel::drop_calculation_chain()
{
    std::set<std::string> met; // many may lead to one part
    relationships_.remove_if([this, &met](const Relationship& one) {
        if (one.kind() != "calcChain" || !package_.has(one.target)) return false;
        if (!met.insert(part_key(one.target)).second) return false;
        if (root_name(package_.original().part(one.target)) != "calcChain") return false;
        package_.remove(one.target);
        return true;
    });
}

const std::string& WorkbookModel::pack()
{
    if (has_new_values_) drop_results();
    if (!is_unpacked_) return packed_.empty() ? package_.original().bytes() : packed_;
    package_.write(workbook_);
    package_.write(relationships_);
    if (strings_) package_.write(strings_->settle());
    for (const auto& sheet : sheets_) {
        if (sheet.part) package_.write(sheet.part->settle());
    }
    packed_ = package_.pack();
    is_unpacked_ = false;
    return packed_;
}

} // namespace tarvik::ooxml

#include "engines/spreadsheets/workbook_model.h"

#include <algorithm>

namespace tarvik::ooxml {

namespace {

constexpr std::string_view plain_type = "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml";
constexpr std::string_view macro_type = "application/vnd.ms-excel.sheet.macroEnabled.main+xml";

// The workbook's part, which must be what this engine can edit.
XmlPart find_workbook(const Package& package, const ContentTypes& types)
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
    return {workbook->target, package.part(workbook->target), "workbook"};
}

// That an element of the workbook's part bears; the prefix of its namespace may be any.
std::string relationship_id(pugi::xml_node node)
{
    for (const auto attribute : node.attributes()) {
        if (std::string_view(attribute.name()).ends_with(":id")) return unescaped(attribute.value());
    }
    return {};
}

// Takes the relationships of that kind away, and says where they led.
void unlink(Relationships& relationships, std::string_view kind, std::vector<std::string>& targets)
{
    relationships.remove_if([&](const Relationship& one) {
        if (one.kind() != kind) return false;
        targets.push_back(one.target);
        return true;
    });
}

// The keys of the parts that these and theirs lead to, themselves included. What the workbook leads to is left out.
std::set<std::string> reached(const Package& package, std::vector<std::string> parts, const XmlPart& workbook)
{
    std::set<std::string> keys;
    while (!parts.empty()) {
        const auto part = std::move(parts.back());
        parts.pop_back();
        if (!package.has(part) || !keys.insert(part_key(part)).second || part == workbook.name()) continue;
        const Relationships relationships(package, part);
        for (const auto& one : relationships.all()) parts.push_back(one.target);
    }
    return keys;
}

// Takes away what a workbook without macros must not have: the macro project, and ribbons whose buttons run macros.
// Damage, with nothing changed, where there are macro sheets, whose formulas others may call.
void drop_macros(PackageEditor& package, const XmlPart& workbook, Relationships& of_workbook)
{
    if (of_workbook.of_kind("xlMacrosheet") || of_workbook.of_kind("xlIntlMacrosheet"))
        throw Damage(U"工作簿里有宏表，只能另存为 .xlsm 格式。");
    Relationships of_package(package.original(), "");
    std::vector<std::string> dropped;
    unlink(of_workbook, "vbaProject", dropped);
    unlink(of_package, "extensibility", dropped);
    package.write(of_package);
    package.types().forget_default("application/vnd.ms-office.vbaProject");

    // What something else leads to as well stays.
    std::vector<std::string> linked;
    for (const auto* relationships : {&of_package, &of_workbook}) {
        for (const auto& one : relationships->all()) linked.push_back(one.target);
    }
    const auto kept = reached(package.original(), std::move(linked), workbook);
    for (const auto& part : reached(package.original(), std::move(dropped), workbook)) {
        if (!kept.contains(part)) package.remove(part);
    }
}

} // namespace

WorkbookModel::WorkbookModel(std::shared_ptr<const Package> package, FormulaServices services)
    : package_(std::move(package)), workbook_(find_workbook(package_.original(), package_.types())),
      relationships_(package_.original(), workbook_.name()), services_(std::move(services))
{
    // Chart, dialog and macro sheets are no worksheets; those of old macro modules have no part at all.
    std::set<std::string> keys;
    int position = -1;
    for (const auto node : child_named(workbook_.root(), "sheets").children()) {
        if (!is_named(node, "sheet")) continue;
        ++position;
        const auto* relationship = relationships_.of_id(relationship_id(node));
        if (!relationship || relationship->kind() != "worksheet") continue;
        auto title = from_utf8(attribute_text(node, "name"));
        if (!package_.original().has(relationship->target)) throw Damage(U"缺少工作表“" + title + U"”的部件。");
        if (!keys.insert(part_key(relationship->target)).second) throw Damage(U"两张工作表共用一个部件。");
        sheets_.push_back({std::move(title), relationship->target, position});
    }
    if (sheets_.empty()) throw Damage(U"工作簿里没有工作表。");
    parts_.resize(sheets_.size());
}

SheetPart& WorkbookModel::sheet(int index)
{
    if (index < 1 || index > sheet_count()) {
        throw Damage(U"工作簿里没有第 " + number_text(index) + U" 张工作表。");
    }
    recalculation();
    return load(index);
}

SheetPart& WorkbookModel::load(int number)
{
    if (!values_) {
        const auto* strings = relationships_.of_kind("sharedStrings");
        if (strings && package_.original().has(strings->target))
            strings_.emplace(XmlPart(strings->target, package_.original().part(strings->target), "sst"));
        values_.emplace(strings_ ? &*strings_ : nullptr, counts_from_1904());
    }
    const auto index = static_cast<std::size_t>(number - 1);
    auto& part = parts_[index];
    if (!part) {
        const auto& name = sheets_[index].part;
        part = std::make_unique<SheetPart>(number, package_.original(), name, *values_, *this);
    }
    return *part;
}

bool WorkbookModel::counts_from_1904() const
{
    return child_named(workbook_.root(), "workbookPr").attribute("date1904").as_bool();
}

void WorkbookModel::set_format(WorkbookFormat format)
{
    const auto wanted = format == WorkbookFormat::Plain ? plain_type : macro_type;
    if (package_.types().of(workbook_.name()) == wanted) return;
    if (format == WorkbookFormat::Plain) drop_macros(package_, workbook_, relationships_);
    package_.types().set(workbook_.name(), wanted);
    is_unpacked_ = true;
}

// Nothing has been changed yet when this is first asked for.
Recalculation& WorkbookModel::recalculation()
{
    if (!recalculation_) {
        auto index = package_.original().derived<FormulaIndex>([this] { return make_index(); });
        recalculation_.emplace(std::move(index), *this);
    }
    return *recalculation_;
}

// A change in one sheet touches the results of others, so none of those may fail later.
std::shared_ptr<FormulaIndex> WorkbookModel::make_index()
{
    const auto& package = package_.original();
    for (int number = 1; number <= sheet_count(); ++number) {
        // Other elements begin like one of a formula, too; a sheet with those is loaded in vain.
        const auto& contents = package.part(sheets_[static_cast<std::size_t>(number - 1)].part);
        if (contents.find("<f") != npos || contents.find(":f") != npos) load(number);
    }
    std::vector<const SheetCells*> cells;
    for (const auto& part : parts_) cells.push_back(part ? &part->cells() : nullptr);
    return std::make_shared<FormulaIndex>(read_names(package, workbook_.root(), sheets_), read_number_formats(package),
                                          cells);
}

void WorkbookModel::touch(int sheet, Place place)
{
    recalculation().touch(sheet, place);
    has_new_values_ = is_unpacked_ = true;
    if (recorded_) (*recorded_)[sheet].cells.insert(place);
}

void WorkbookModel::split(int sheet, const Range& range)
{
    if (recorded_) (*recorded_)[sheet].split.push_back(range);
}

std::vector<SheetChanges> WorkbookModel::changes() const
{
    std::vector<SheetChanges> changes;
    for (const auto& [sheet, recorded] : *recorded_) {
        auto& of_sheet = changes.emplace_back(SheetChanges{position(sheet), recorded.split, {}});
        const auto& part = *parts_[static_cast<std::size_t>(sheet - 1)];
        for (const auto place : recorded.cells) of_sheet.cells.emplace_back(place, part.held(place));
    }
    return changes;
}

bool WorkbookModel::fits(Place last)
{
    for (int sheet = 1; sheet <= sheet_count(); ++sheet) {
        const auto& part = load(sheet);
        if (!part.is_blank({{last.row + 1, 1}, whole_sheet.last}) ||
            !part.is_blank({{1, last.column + 1}, {last.row, last_column_of_sheet}}))
            return false;
    }
    return true;
}

void WorkbookModel::update(int sheet, const Range& range)
{
    const auto failed = recalculation().update(sheet, range);
    if (failed != FormulaIndex::none) ask_suite(failed);
}

bool WorkbookModel::takes_numbers(int sheet, Place place, std::size_t format)
{
    const auto& index = recalculation().index();
    const auto kind = index.format(format);
    return kind == NumberFormat::Number || (kind != NumberFormat::Text && index.areas(sheet).contains(place));
}

void WorkbookModel::refuse(FormulaIndex::Number number, const Text& why) const
{
    const auto& formula = recalculation_->index()[number];
    const auto& title = sheets_[static_cast<std::size_t>(formula.sheet - 1)].title;
    throw Damage(U"工作表“" + title + U"”单元格 " + from_utf8(place_name(formula.place())) + U" 的公式（" +
                 from_utf8(recalculation_->failed().at(number)) + U"）无法计算，请先用电子表格软件打开并保存该文件。" +
                 why);
}

// What it calculates is taken for all formulas that we could not, unless it does not know a name either.
void WorkbookModel::ask_suite(FormulaIndex::Number number)
{
    if (!services_.recalculate) refuse(number, {});
    std::unique_ptr<WorkbookModel> theirs;
    try {
        theirs = std::make_unique<WorkbookModel>(std::make_shared<const Package>(services_.recalculate(pack())));
    } catch (const Damage& damage) {
        refuse(number, damage.message());
    }
    if (theirs->sheet_count() != sheet_count()) refuse(number, {});
    const auto failed = recalculation_->failed();
    for (const auto& [one, reason] : failed) {
        const auto& formula = recalculation_->index()[one];
        const auto results = theirs->load(formula.sheet).values(formula.range);
        if (std::ranges::find(results, calculation::Value(calculation::CellError::Name)) == results.end())
            recalculation_->keep(one, results);
    }
    if (recalculation_->failed().contains(number)) refuse(number, {});
}

void WorkbookModel::ask_for_calculation()
{
    auto root = workbook_.root();
    auto calculation = child_named(root, "calcPr");
    if (calculation.attribute("fullCalcOnLoad").as_bool()) return;
    if (!calculation) {
        // The elements of a workbook have a fixed order; it stands behind the last of these.
        pugi::xml_node last;
        for (const char* name : {"sheets", "functionGroups", "externalReferences", "definedNames"})
            if (const auto found = child_named(root, name)) last = found;
        calculation = root.insert_child_after(name_like(root, "calcPr").c_str(), last);
    }
    set_attribute(calculation, "fullCalcOnLoad", "1");
    workbook_.changed = true;
}

// Only what is declared as such a chain: the relationship may lead anywhere.
void WorkbookModel::drop_calculation_chain()
{
    relationships_.remove_if([this](const Relationship& one) {
        const bool is_chain = one.kind() == "calcChain" && package_.has(one.target) &&
                              package_.types().of(one.target).find("calcChain") != std::string::npos;
        if (is_chain) package_.remove(one.target);
        return is_chain;
    });
}

const std::string& WorkbookModel::pack()
{
    if (has_new_values_) {
        recalculation().update_all();
        ask_for_calculation();
        drop_calculation_chain();
        has_new_values_ = false;
    }
    if (!is_unpacked_) return packed_.empty() ? package_.original().bytes() : packed_;
    package_.write(workbook_);
    package_.write(relationships_);
    if (strings_) package_.write(strings_->settle());
    for (const auto& part : parts_)
        if (part) package_.write(part->settle());
    packed_ = package_.pack();
    is_unpacked_ = false;
    return packed_;
}

} // namespace tarvik::ooxml

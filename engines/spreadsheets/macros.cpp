#include "engines/spreadsheets/macros.h"

#include <algorithm>
#include <set>
#include <vector>

namespace tarvik::ooxml {

namespace {

constexpr std::string_view project_type = "application/vnd.ms-office.vbaProject";

bool is_project(const Relationship& one)
{
    return one.kind() == "vbaProject";
}

bool is_macro_sheet(const Relationship& one)
{
    return one.kind() == "xlMacrosheet" || one.kind() == "xlIntlMacrosheet";
}

bool is_ribbon(const Relationship& one)
{
    return one.kind() == "extensibility";
}

// Takes the picked relationships away, and says where they led.
void unlink(Relationships& relationships, bool (*is_picked)(const Relationship&), std::vector<std::string>& targets)
{
    for (const auto& one : relationships.all()) {
        if (is_picked(one)) targets.push_back(one.target);
    }
    relationships.remove_if(is_picked);
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

struct MacroSheets {
    std::vector<bool> is_removed; // by the sheet's index
    std::vector<std::string> names;

    bool has(std::size_t index) const { return index < is_removed.size() && is_removed[index]; }
    // The index that a sheet has once they are gone.
    std::size_t index_after(std::size_t index) const
    {
        const auto end = is_removed.begin() + static_cast<std::ptrdiff_t>(std::min(index, is_removed.size()));
        return index - static_cast<std::size_t>(std::count(is_removed.begin(), end, true));
    }
    bool are_meant_by(std::string_view formula) const
    {
        return std::any_of(names.begin(), names.end(), [formula](const auto& name) {
            return formula.find(name + "!") != std::string_view::npos ||
                   formula.find("'" + name + "'!") != std::string_view::npos;
        });
    }
};

MacroSheets remove_macro_sheets(pugi::xml_node sheets, const Relationships& of_workbook)
{
    MacroSheets removed;
    for (auto node = sheets.first_child(); node;) {
        const auto next = node.next_sibling();
        if (is_named(node, "sheet")) {
            const auto* relationship = of_workbook.of_id(relationship_id(node));
            removed.is_removed.push_back(relationship && is_macro_sheet(*relationship));
            if (removed.is_removed.back()) {
                removed.names.push_back(attribute_text(node, "name"));
                remove_element(sheets, node);
            }
        }
        node = next;
    }
    return removed;
}

// Every name of the workbook is searched for each of them.
void refuse_many_macro_sheets(pugi::xml_node sheets, const Relationships& of_workbook)
{
    constexpr int most = 200;
    const auto nodes = sheets.children();
    const auto count = std::count_if(nodes.begin(), nodes.end(), [&](const auto& node) {
        const auto* relationship = of_workbook.of_id(relationship_id(node));
        return relationship && is_macro_sheet(*relationship);
    });
    if (count > most) throw Damage(U"工作簿里的宏表过多。");
}

void move_index(pugi::xml_node node, const char* name, const MacroSheets& removed)
{
    auto attribute = node.attribute(name);
    if (attribute) attribute.set_value(static_cast<unsigned long long>(removed.index_after(attribute.as_uint())));
}

void mend_names(pugi::xml_node names, const MacroSheets& removed)
{
    for (auto node = names.first_child(); node;) {
        const auto next = node.next_sibling();
        const auto sheet = node.attribute("localSheetId");
        if ((sheet && removed.has(sheet.as_uint())) || removed.are_meant_by(element_text(node))) {
            remove_element(names, node);
        } else {
            move_index(node, "localSheetId", removed);
        }
        node = next;
    }
}

void drop_macro_sheets(XmlPart& workbook, const Relationships& of_workbook)
{
    const auto& all = of_workbook.all();
    if (std::none_of(all.begin(), all.end(), is_macro_sheet)) return;
    auto root = workbook.root();
    refuse_many_macro_sheets(child_named(root, "sheets"), of_workbook);
    const auto removed = remove_macro_sheets(child_named(root, "sheets"), of_workbook);
    if (auto names = child_named(root, "definedNames")) {
        mend_names(names, removed);
        if (!names.first_child()) remove_element(root, names);
    }
    for (const auto view : child_named(root, "bookViews").children()) {
        move_index(view, "activeTab", removed);
        move_index(view, "firstSheet", removed);
    }
    workbook.changed = true;
}

} // namespace

std::string relationship_id(pugi::xml_node node)
{
    for (const auto attribute : node.attributes()) {
        if (std::string_view(attribute.name()).ends_with(":id")) return unescaped(attribute.value());
    }
    return {};
}

void drop_macros(PackageEditor& package, XmlPart& workbook, Relationships& of_workbook)
{
    drop_macro_sheets(workbook, of_workbook);
    Relationships of_package(package.original(), "");
    std::vector<std::string> dropped;
    unlink(of_workbook, is_macro_sheet, dropped);
    unlink(of_workbook, is_project, dropped);
    unlink(of_package, is_ribbon, dropped);
    package.write(of_package);
    package.types().forget_default(project_type);

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

} // namespace tarvik::ooxml

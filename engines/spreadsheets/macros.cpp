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

} // namespace

std::string relationship_id(pugi::xml_node node)
{
    for (const auto attribute : node.attributes()) {
        if (std::string_view(attribute.name()).ends_with(":id")) return unescaped(attribute.value());
    }
    return {};
}

void drop_macros(PackageEditor& package, const XmlPart& workbook, Relationships& of_workbook)
{
    if (std::ranges::any_of(of_workbook.all(), is_macro_sheet)) {
        throw Damage(U"工作簿里有宏表，只能另存为 .xlsm 格式。");
    }
    Relationships of_package(package.original(), "");
    std::vector<std::string> dropped;
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

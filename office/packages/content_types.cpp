#include "office/packages/content_types.h"

namespace tarvik::ooxml {

namespace {

constexpr const char* types_name = "[Content_Types].xml";

std::string_view extension_of(std::string_view part_name)
{
    return part_name.substr(part_name.rfind('.') + 1);
}

bool equal_names(std::string_view a, std::string_view b)
{
    return lower(from_utf8(a)) == lower(from_utf8(b));
}

} // namespace

ContentTypes::ContentTypes(const Package& package) : part_(types_name, package.part(types_name), "Types") {}

pugi::xml_node ContentTypes::entry_of(std::string_view part_name) const
{
    const auto full_name = "/" + std::string(part_name);
    for (const auto node : part_.root().children()) {
        if (is_named(node, "Override") && equal_names(attribute_text(node, "PartName"), full_name)) return node;
    }
    return {};
}

pugi::xml_node ContentTypes::default_of(std::string_view part_name) const
{
    const auto extension = extension_of(part_name);
    for (const auto node : part_.root().children()) {
        if (is_named(node, "Default") && equal_names(attribute_text(node, "Extension"), extension)) return node;
    }
    return {};
}

std::string ContentTypes::of(std::string_view part_name) const
{
    const auto entry = entry_of(part_name);
    return attribute_text(entry ? entry : default_of(part_name), "ContentType");
}

void ContentTypes::add(std::string_view part_name, std::string_view type)
{
    if (of(part_name) == type) return;
    if (entry_of(part_name) || default_of(part_name)) return set(part_name, type);
    auto root = part_.root();
    auto entry = root.prepend_child(name_like(root, "Default").c_str());
    set_attribute(entry, "Extension", extension_of(part_name));
    set_attribute(entry, "ContentType", type);
    part_.changed = true;
}

void ContentTypes::set(std::string_view part_name, std::string_view type)
{
    auto entry = entry_of(part_name);
    if (!entry) {
        entry = part_.root().append_child(name_like(part_.root(), "Override").c_str());
        set_attribute(entry, "PartName", "/" + std::string(part_name));
    }
    set_attribute(entry, "ContentType", type);
    part_.changed = true;
}

void ContentTypes::forget(std::string_view part_name)
{
    const auto entry = entry_of(part_name);
    if (!entry) return;
    remove_element(part_.root(), entry);
    part_.changed = true;
}

void ContentTypes::forget_default(std::string_view type)
{
    for (auto node = part_.root().first_child(); node;) {
        const auto next = node.next_sibling();
        if (is_named(node, "Default") && attribute_text(node, "ContentType") == type) {
            remove_element(part_.root(), node);
            part_.changed = true;
        }
        node = next;
    }
}

} // namespace tarvik::ooxml

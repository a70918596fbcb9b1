#include "engines/packages/package_editor.h"

namespace tarvik::ooxml {

namespace {

constexpr std::string_view relationships_type = "application/vnd.openxmlformats-package.relationships+xml";
constexpr const char* types_name = "[Content_Types].xml";

std::string_view extension_of(std::string_view part_name)
{
    return part_name.substr(part_name.rfind('.') + 1);
}

} // namespace

ContentTypes::ContentTypes(const Package& package) : part_(types_name, package.part(types_name), "Types")
{
    for (const auto node : part_.root().children()) {
        if (is_named(node, "Override")) overrides_.emplace(part_key(attribute_text(node, "PartName")), node);
    }
}

pugi::xml_node ContentTypes::entry_of(std::string_view part_name) const
{
    const auto found = overrides_.find(part_key(part_name));
    return found == overrides_.end() ? pugi::xml_node() : found->second;
}

pugi::xml_node ContentTypes::default_of(std::string_view part_name) const
{
    const auto extension = part_key(extension_of(part_name));
    for (const auto node : part_.root().children()) {
        if (is_named(node, "Default") && part_key(attribute_text(node, "Extension")) == extension) return node;
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
        overrides_.emplace(part_key(part_name), entry);
    }
    set_attribute(entry, "ContentType", type);
    part_.changed = true;
}

void ContentTypes::forget(std::string_view part_name)
{
    const auto entry = entry_of(part_name);
    if (!entry) return;
    overrides_.erase(part_key(part_name));
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

PackageEditor::PackageEditor(std::shared_ptr<const Package> package) : package_(std::move(package)), types_(*package_)
{
}

bool PackageEditor::has(std::string_view part) const
{
    const std::string name(part);
    if (changes_.written.contains(name)) return true;
    return package_->has(part) && !changes_.removed.contains(part_key(part));
}

std::string PackageEditor::free_name(std::string_view stem, std::string_view extension) const
{
    for (int number = 1;; ++number) {
        auto name = std::string(stem).append(std::to_string(number)).append(extension);
        if (!has(name) && !package_->has(name)) return name;
    }
}

void PackageEditor::add(const std::string& name, std::string contents, std::string_view type)
{
    changes_.written.insert_or_assign(name, std::move(contents));
    types_.add(name, type);
}

void PackageEditor::write(const XmlPart& part)
{
    if (part.changed) changes_.written.insert_or_assign(part.name(), part.print());
}

void PackageEditor::write(const Relationships& relationships)
{
    const auto* part = relationships.part();
    if (!part) return;
    write(*part);
    if (part->changed && !package_->has(part->name())) types_.add(part->name(), relationships_type);
}

void PackageEditor::remove(std::string_view part)
{
    for (const auto& name : {std::string(part), relationships_name(part)}) {
        changes_.written.erase(name);
        types_.forget(name);
        if (package_->has(name)) changes_.removed.insert(part_key(name));
    }
}

std::string PackageEditor::pack()
{
    write(types_.part());
    return package_->with(changes_);
}

} // namespace tarvik::ooxml

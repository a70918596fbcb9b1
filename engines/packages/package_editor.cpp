#include "engines/packages/package_editor.h"

#include <algorithm>
#include <set>

namespace tarvik::ooxml {

namespace {

// The part that a target means, told from the folder of its source.
std::string resolved(std::string_view source, std::string target)
{
    std::replace(target.begin(), target.end(), '\\', '/');
    if (!target.starts_with('/')) target.insert(0, folder_of(source));
    std::vector<std::string> steps;
    for (std::size_t at = 0; at <= target.size();) {
        const auto end = std::min(target.find('/', at), target.size());
        const auto step = target.substr(at, end - at);
        if (step == "..") {
            if (!steps.empty()) steps.pop_back();
        } else if (!step.empty() && step != ".") {
            steps.push_back(step);
        }
        at = end + 1;
    }
    std::string name;
    for (const auto& step : steps) name += (name.empty() ? "" : "/") + step;
    return name;
}

// How the source writes a target: from its own folder, or from the root where the target lies elsewhere.
std::string written_target(std::string_view source, std::string_view target)
{
    const auto folder = folder_of(source);
    if (target.starts_with(folder)) return std::string(target.substr(folder.size()));
    return "/" + std::string(target);
}

constexpr const char* no_relationships =
    "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
    "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"/>";

constexpr std::string_view relationships_type = "application/vnd.openxmlformats-package.relationships+xml";
constexpr const char* types_name = "[Content_Types].xml";

std::string_view extension_of(std::string_view part_name)
{
    return part_name.substr(part_name.rfind('.') + 1);
}

} // namespace

std::string_view folder_of(std::string_view part)
{
    const auto separator = part.rfind('/');
    return separator == std::string_view::npos ? std::string_view() : part.substr(0, separator + 1);
}

std::string relationships_name(std::string_view source)
{
    const auto folder = folder_of(source);
    return std::string(folder) + "_rels/" + std::string(source.substr(folder.size())) + ".rels";
}

Relationships::Relationships(const Package& package, std::string_view source) : source_(source)
{
    auto name = relationships_name(source);
    if (!package.has(name)) return;
    const auto& contents = package.part(name);
    part_ = std::make_unique<XmlPart>(std::move(name), contents, "Relationships");
    for (const auto node : part_->root().children()) {
        if (!is_named(node, "Relationship") || attribute_text(node, "TargetMode") == "External") continue;
        all_.push_back({attribute_text(node, "Id"), attribute_text(node, "Type"),
                        resolved(source, attribute_text(node, "Target")), node});
    }
    index_ids();
}

void Relationships::index_ids()
{
    by_id_.clear();
    for (std::size_t i = 0; i < all_.size(); ++i) by_id_.emplace(all_[i].id, i);
}

const Relationship* Relationships::of_kind(std::string_view kind) const noexcept
{
    const auto found = std::ranges::find(all_, kind, &Relationship::kind);
    return found == all_.end() ? nullptr : &*found;
}

const Relationship* Relationships::of_id(std::string_view id) const
{
    const auto found = by_id_.find(std::string(id));
    return found == by_id_.end() ? nullptr : &all_[found->second];
}

std::string Relationships::add(std::string_view type, std::string_view target)
{
    if (!part_) part_ = std::make_unique<XmlPart>(relationships_name(source_), no_relationships, "Relationships");
    std::set<std::string> taken; // by external ones too
    for (const auto node : part_->root().children()) taken.insert(attribute_text(node, "Id"));
    auto number = all_.size() + 1;
    while (taken.contains("rId" + std::to_string(number))) ++number;
    auto node = part_->root().append_child(name_like(part_->root(), "Relationship").c_str());
    auto id = "rId" + std::to_string(number);
    set_attribute(node, "Id", id);
    set_attribute(node, "Type", type);
    set_attribute(node, "Target", written_target(source_, target));
    part_->changed = true;
    by_id_.emplace(id, all_.size());
    all_.push_back({id, std::string(type), std::string(target), node});
    return id;
}

void Relationships::remove_if(const std::function<bool(const Relationship&)>& is_picked)
{
    const auto removed = std::erase_if(all_, [&](const Relationship& one) {
        if (!is_picked(one)) return false;
        remove_element(part_->root(), one.node);
        return true;
    });
    if (removed == 0) return;
    part_->changed = true;
    index_ids();
}

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

#include "engines/packages/package_editor.h"

namespace tarvik::ooxml {

namespace {

constexpr std::string_view relationships_type = "application/vnd.openxmlformats-package.relationships+xml";

} // namespace

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

#include "office/packages/relationships.h"

#include <algorithm>

namespace tarvik::ooxml {

namespace {

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

/// The part that a target means, told from the folder of its source.
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

} // namespace

Relationships::Relationships(const Package& package, std::string_view source)
{
    auto name = relationships_name(source);
    if (!package.has(name)) return;
    const auto& contents = package.part(name);
    part_ = std::make_unique<XmlPart>(std::move(name), contents, "Relationships");
    for (const auto node : part_->root().children()) {
        if (!is_named(node, "Relationship") || attribute_text(node, "TargetMode") == "External") continue;
        const auto type = attribute_text(node, "Type");
        all_.push_back({attribute_text(node, "Id"), type.substr(type.rfind('/') + 1),
                        resolved(source, attribute_text(node, "Target"))});
    }
}

const Relationship* Relationships::of_kind(std::string_view kind) const noexcept
{
    const auto found = std::find_if(all_.begin(), all_.end(), [&](const auto& one) { return one.kind == kind; });
    return found == all_.end() ? nullptr : &*found;
}

const Relationship* Relationships::of_id(std::string_view id) const noexcept
{
    const auto found = std::find_if(all_.begin(), all_.end(), [&](const auto& one) { return one.id == id; });
    return found == all_.end() ? nullptr : &*found;
}

void Relationships::remove(std::string_view id)
{
    for (const auto node : part_->root().children()) {
        if (!is_named(node, "Relationship") || attribute_text(node, "Id") != id) continue;
        remove_element(part_->root(), node);
        part_->changed = true;
        break;
    }
    std::erase_if(all_, [&](const auto& one) { return one.id == id; });
}

} // namespace tarvik::ooxml

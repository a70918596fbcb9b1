#include "engines/documents/elements.h"

#include "engines/packages/xml_part.h"

#include <algorithm>

namespace tarvik::ooxml {

pugi::xml_node node_behind(pugi::xml_node node, pugi::xml_node root) noexcept
{
    while (node && node != root) {
        if (const auto next = node.next_sibling()) return next;
        node = node.parent();
    }
    return {};
}

std::vector<pugi::xml_node> nearest(pugi::xml_node root, std::string_view local_name,
                                    std::initializer_list<std::string_view> closed, std::size_t most)
{
    std::vector<pugi::xml_node> found;
    const auto prefix = name_like(root, "");
    for (auto node = root.first_child(); node && found.size() < most;) {
        const std::string_view name = node.name();
        const auto is_it = [&](std::string_view local) {
            return name.starts_with(prefix) && name.substr(prefix.size()) == local;
        };
        const bool fits = is_it(local_name);
        if (fits) found.push_back(node);
        const auto inner =
            fits || std::any_of(closed.begin(), closed.end(), is_it) ? pugi::xml_node() : node.first_child();
        node = inner ? inner : node_behind(node, root);
    }
    return found;
}

pugi::xml_node around(pugi::xml_node node, std::string_view local_name) noexcept
{
    for (node = node.parent(); node; node = node.parent()) {
        if (is_named(node, local_name)) return node;
    }
    return {};
}

std::string value_of(pugi::xml_node node, std::string_view local_name)
{
    for (const auto attribute : node.attributes()) {
        const std::string_view name = attribute.name();
        if (name.substr(name.find(':') + 1) == local_name) return unescaped(attribute.value());
    }
    return {};
}

} // namespace tarvik::ooxml

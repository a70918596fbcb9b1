#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

/// Ways through the elements of a document, which may nest to any depth.
namespace tarvik::ooxml {

/// The next node behind `node` and all that is in it, in document order and below `root`; else a null node.
pugi::xml_node node_behind(pugi::xml_node node, pugi::xml_node root) noexcept;
/// The elements of that local name below `root`, in document order, `most` of them at most. Neither those found nor
/// those named in `closed` are looked into; what wraps them (content controls, custom XML, tracked changes) is. Only
/// elements with the prefix of `root` count.
std::vector<pugi::xml_node> nearest(pugi::xml_node root, std::string_view local_name,
                                    std::initializer_list<std::string_view> closed = {},
                                    std::size_t most = static_cast<std::size_t>(-1));
/// The nearest element of that local name around `node`, or a null node.
pugi::xml_node around(pugi::xml_node node, std::string_view local_name) noexcept;
/// The value of the attribute of that local name, whatever its prefix; empty if there is none.
std::string value_of(pugi::xml_node node, std::string_view local_name);

} // namespace tarvik::ooxml

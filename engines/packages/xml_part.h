#pragma once

#include "engines/packages/damage.h"

#include <cstdint>
#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace tarvik::ooxml {

/// An XML part of a package, edited in place. Its tree holds texts and attribute values as they are written, entities,
/// line ends and white space included, so that what nobody touches is printed back as it was. The functions below read
/// and write such raw values.
class XmlPart {
public:
    /// `root` is the local name that the document element must have. Document type declarations are refused.
    XmlPart(std::string name, const std::string& contents, std::string_view root);

    const std::string& name() const noexcept { return name_; }
    pugi::xml_node root() const { return document_.document_element(); }
    std::string print() const;

    /// Whether the part must be written anew.
    bool changed = false;

private:
    std::string name_;
    std::string behind_declaration_; // the white space there, which the tree does not hold
    pugi::xml_document document_;
};

/// How many bytes the tree of such a part and the working on it take, a generous guess.
std::uint64_t tree_memory(std::string_view xml) noexcept;
/// No part takes less for each of its bytes.
inline constexpr std::uint64_t least_tree_memory_per_byte = 4;

// Elements are known by their local names: a part may write its own namespace with any prefix or none.

bool is_named(pugi::xml_node node, std::string_view local_name) noexcept;
/// The first child element of that name, or a null node.
pugi::xml_node child_named(pugi::xml_node parent, std::string_view local_name) noexcept;
/// `local_name` with the prefix that `relative` bears.
std::string name_like(pugi::xml_node relative, std::string_view local_name);

/// What a reader understands where `raw` is written: entities and character references resolved, line ends as LF.
std::string unescaped(std::string_view raw);
/// The way to write a text, also between double quotes.
std::string escaped(std::string_view text);

/// The attribute's value; empty if there is none.
std::string attribute_text(pugi::xml_node node, const char* name);
void set_attribute(pugi::xml_node node, const char* name, std::string_view text);
/// The characters directly in the element.
std::string element_text(pugi::xml_node element);
/// Appends the element as its part will hold it.
void append_printed(pugi::xml_node element, std::string& target);
/// Appends elements that append_printed() wrote.
void append_elements(pugi::xml_node parent, std::string_view printed);
/// Appends an element, named as `parent` is, that holds nothing but `raw`.
void append_raw_element(pugi::xml_node parent, const char* local_name, const std::string& raw);
/// Makes `raw` the element's only contents; the element must hold nothing but characters.
void set_raw_text(pugi::xml_node element, const std::string& raw);
/// Removes a child with all that is in it.
void remove_element(pugi::xml_node parent, pugi::xml_node child);
/// Damage when the element nests so deeply that remove_element() refuses it.
void check_removable(pugi::xml_node element);

} // namespace tarvik::ooxml

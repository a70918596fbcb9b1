#pragma once

#include "engines/packages/package.h"
#include "engines/packages/xml_part.h"

#include <string>
#include <string_view>
#include <unordered_map>

namespace tarvik::ooxml {

/// The package's table of what its parts are.
class ContentTypes {
public:
    explicit ContentTypes(const Package& package);

    /// The content type of a part, empty when the table tells none.
    std::string of(std::string_view part_name) const;
    void set(std::string_view part_name, std::string_view type);
    /// Tells what a new part is, by its extension when the table says nothing of that yet.
    void add(std::string_view part_name, std::string_view type);
    void forget(std::string_view part_name);
    /// Forgets what parts with some extension are when that is `type`.
    void forget_default(std::string_view type);
    const XmlPart& part() const noexcept { return part_; }

private:
    pugi::xml_node entry_of(std::string_view part_name) const;
    pugi::xml_node default_of(std::string_view part_name) const;

    XmlPart part_;
    std::unordered_map<std::string, pugi::xml_node> overrides_; // by part_key()
};

} // namespace tarvik::ooxml

#pragma once

#include "engines/packages/package.h"
#include "engines/packages/xml_part.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tarvik::ooxml {

struct Relationship {
    std::string id;
    std::string type;
    std::string target; ///< the part's name in the package

    /// The last word of its type: "worksheet", "sharedStrings", ...
    std::string_view kind() const noexcept { return std::string_view(type).substr(type.rfind('/') + 1); }
};

/// The folder that a part lies in, with a separator behind it; empty for a part in the root.
std::string_view folder_of(std::string_view part);
/// The name of the part that holds the relationships of the part `source`; the empty name stands for the package.
std::string relationships_name(std::string_view source);

/// What a part says about the parts that belong to it. External targets are left out.
class Relationships {
public:
    /// Of the part `source`; the empty name stands for the package itself. A part without relationships has none.
    Relationships(const Package& package, std::string_view source);

    const std::vector<Relationship>& all() const noexcept { return all_; }
    /// The first of that kind, or nullptr.
    const Relationship* of_kind(std::string_view kind) const noexcept;
    const Relationship* of_id(std::string_view id) const;
    /// Adds one to the part `target`, and gives its id, which is new. A part that has no relationships yet gets a part
    /// that holds them.
    std::string add(std::string_view type, std::string_view target);
    /// Removes all that the predicate picks.
    void remove_if(const std::function<bool(const Relationship&)>& is_picked);
    /// The part that holds them; nullptr when there is none.
    const XmlPart* part() const noexcept { return part_.get(); }

private:
    void index_ids();

    std::string source_;
    std::vector<Relationship> all_;
    std::unordered_map<std::string, std::size_t> by_id_; // index among all of them
    std::unique_ptr<XmlPart> part_;
};

} // namespace tarvik::ooxml

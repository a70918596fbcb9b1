#pragma once

#include "office/packages/package.h"
#include "office/packages/xml_part.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik::ooxml {

struct Relationship {
    std::string id;
    std::string kind;   ///< the last word of its type: "worksheet", "sharedStrings", ...
    std::string target; ///< the part's name in the package
};

/// What a part says about the parts that belong to it. External targets are left out.
class Relationships {
public:
    /// Of the part `source`; the empty name stands for the package itself. A part without relationships has none.
    Relationships(const Package& package, std::string_view source);

    const std::vector<Relationship>& all() const noexcept { return all_; }
    /// The first of that kind, or nullptr.
    const Relationship* of_kind(std::string_view kind) const noexcept;
    const Relationship* of_id(std::string_view id) const noexcept;
    void remove(std::string_view id);
    /// The part that holds them; nullptr when there is none.
    const XmlPart* part() const noexcept { return part_.get(); }

private:
    std::vector<Relationship> all_;
    std::unique_ptr<XmlPart> part_;
};

} // namespace tarvik::ooxml

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
    std::string target;  ///< the part's name in the package
    pugi::xml_node node; ///< its element, as long as the relationships that it is one of

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

/// A package and what shall be other in it when it is packed anew.
class PackageEditor {
public:
    explicit PackageEditor(std::shared_ptr<const Package> package);

    /// The package as it was opened.
    const Package& original() const noexcept { return *package_; }
    ContentTypes& types() noexcept { return types_; }

    /// Whether the new package has a part of that name.
    bool has(std::string_view part) const;
    /// A name that no part has: `stem` and `extension` with a number between them ("word/media/image" and ".png" give
    /// "word/media/image1.png").
    std::string free_name(std::string_view stem, std::string_view extension) const;
    /// Adds a part, which the package must not have yet, and says what it is.
    void add(const std::string& name, std::string contents, std::string_view type);
    /// Takes over what the part holds now if it changed.
    void write(const XmlPart& part);
    void write(const Relationships& relationships);
    /// Removes a part with its relationships and what the package says of its type; relationships that lead to it stay.
    void remove(std::string_view part);

    /// The bytes of the new package.
    std::string pack();

private:
    std::shared_ptr<const Package> package_;
    ContentTypes types_;
    PartChanges changes_;
};

} // namespace tarvik::ooxml

#pragma once

#include "engines/packages/content_types.h"
#include "engines/packages/package.h"
#include "engines/packages/relationships.h"

#include <memory>
#include <string>
#include <string_view>

namespace tarvik::ooxml {

/// A package and what shall be other in it when it is packed anew.
class PackageEditor {
public:
    explicit PackageEditor(std::shared_ptr<const Package> package);

    /// The package as it was opened.
    const Package& original() const noexcept { return *package_; }
    ContentTypes& types() noexcept { return types_; }
    const ContentTypes& types() const noexcept { return types_; }

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

#pragma once

#include "engines/packages/relationships.h"
#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/range_set.h"

#include <set>
#include <string>
#include <string_view>

namespace tarvik::ooxml {

/// Calls `visitor` with the root of each part of that kind that a sheet leads to, each once. Throws Damage.
template <typename Visitor>
void visit_related(const Package& package, std::string_view sheet, std::string_view kind, const char* root,
                   Visitor&& visitor)
{
    std::set<std::string> met;
    const Relationships relationships(package, sheet);
    for (const auto& one : relationships.all())
        if (one.kind() == kind && package.has(one.target) && met.insert(part_key(one.target)).second)
            visitor(XmlPart(one.target, package.part(one.target), root, Vocabulary::Spreadsheet).root());
}

/// Cells of a worksheet whose texts other parts repeat.
struct ProtectedAreas {
    /// Throws Damage.
    ProtectedAreas(const Package& package, std::string_view sheet);

    /// The header rows of tables. A table's part names its columns by these texts, and formulas everywhere refer to
    /// them, so a spreadsheet application calls the file damaged when they differ.
    RangeSet headers;
    /// What pivot tables fill; a spreadsheet application fills it anew from their own records.
    RangeSet pivots;
};

} // namespace tarvik::ooxml

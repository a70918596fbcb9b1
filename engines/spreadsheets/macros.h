#pragma once

#include "engines/packages/package_editor.h"

namespace tarvik::ooxml {

/// The relationship id that an element of the workbook's part bears; the prefix of its namespace may be any.
std::string relationship_id(pugi::xml_node node);

/// Takes away what a workbook without macros must not have: the macro project, and ribbons whose buttons run macros.
/// Damage, with nothing changed, where there are macro sheets, whose formulas others may call.
void drop_macros(PackageEditor& package, const XmlPart& workbook, Relationships& of_workbook);

} // namespace tarvik::ooxml

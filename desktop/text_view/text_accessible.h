#pragma once

namespace tarvik {

/// The property of a widget of our own drawing that holds its QAccessible::Role.
inline constexpr const char* accessible_role = "accessibleRole";

/// From now on screen readers find text, caret and selection of text views, and the roles of other widgets.
void make_accessible();

} // namespace tarvik

#pragma once

class QWidget;

namespace tarvik {

/// The property of a widget of our own drawing that holds its QAccessible::Role.
inline constexpr const char* accessible_role = "accessibleRole";

/// From now on screen readers find text, caret and selection of text views, and the roles of other widgets. To be
/// called before there are any.
void open_to_screen_readers();

/// For the end of a widget's construction: a screen reader may have asked for it while it was none of ours yet.
void forget_accessible(QWidget& widget);

} // namespace tarvik

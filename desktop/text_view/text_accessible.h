#pragma once

class QWidget;

namespace tarvik {

/// The property of a widget of our own drawing that holds its QAccessible::Role.
inline constexpr const char* accessible_role = "accessibleRole";

/// While it lives, screen readers find text, caret and selection of text views, and the roles of other widgets. It must
/// come before the widgets.
class AccessibleWidgets {
public:
    AccessibleWidgets();
    ~AccessibleWidgets();
    AccessibleWidgets(const AccessibleWidgets&) = delete;
    AccessibleWidgets& operator=(const AccessibleWidgets&) = delete;
};

/// For the end of a widget's construction: a screen reader may have asked for it while it was none of ours yet.
void forget_accessible(QWidget& widget);

} // namespace tarvik

#include "desktop/controls/form_layout.h"

#include <QWidget>

namespace tarvik {

void FormLayout::place(const Scale& scale) const
{
    for (const Entry& entry : entries_) {
        const Place at = fit_(*entry.control);
        entry.widget->setGeometry(scale.rectangle(at.left, at.top, at.width, at.height));
    }
}

void FormLayout::set_fonts(const Theme& theme, const Scale& scale) const
{
    for (const Entry& entry : entries_) entry.widget->setFont(theme.font(entry.role, scale));
}

} // namespace tarvik

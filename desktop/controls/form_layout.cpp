#include "desktop/controls/form_layout.h"

#include <QLabel>

namespace tarvik {

namespace {

// Margins do not get smaller with the window, so that a text can need a little more room than it has.
void fit_text(QLabel& label)
{
    constexpr int most_steps = 8;
    constexpr double step = 0.97;
    for (int i = 0; i < most_steps && label.heightForWidth(label.width()) > label.height(); ++i) {
        QFont font = label.font();
        font.setPointSizeF(font.pointSizeF() * step);
        label.setFont(font);
    }
}

} // namespace

void FormLayout::place(const Scale& scale) const
{
    for (const Entry& entry : entries_) {
        const Place at = fit_(*entry.control);
        entry.widget->setGeometry(scale.rectangle(at.left, at.top, at.width, at.height));
        if (auto* label = dynamic_cast<QLabel*>(entry.widget); label && label->wordWrap()) fit_text(*label);
    }
}

void FormLayout::set_fonts(const Theme& theme, const Scale& scale) const
{
    for (const Entry& entry : entries_) entry.widget->setFont(theme.font(entry.role, scale));
}

} // namespace tarvik

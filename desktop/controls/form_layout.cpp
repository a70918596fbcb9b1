#include "desktop/controls/form_layout.h"

#include <QLabel>

#include <algorithm>
#include <limits>
#include <vector>

namespace tarvik {

namespace {

// How large the text of a label can be to fit into it, in points. Margins do not get smaller with the window, so that a
// text can need a little more room than it has.
double fitting_points(const QLabel& label)
{
    constexpr int most_steps = 8;
    constexpr double step = 0.97;
    QLabel trial(label.text());
    trial.setWordWrap(true);
    trial.setMargin(label.margin());
    trial.setContentsMargins(label.contentsMargins());
    QFont font = label.font();
    trial.setFont(font);
    for (int i = 0; i < most_steps && trial.heightForWidth(label.width()) > label.height(); ++i) {
        font.setPointSizeF(font.pointSizeF() * step);
        trial.setFont(font);
    }
    return font.pointSizeF();
}

} // namespace

void FormLayout::place(const Scale& scale) const
{
    std::vector<QLabel*> texts;
    for (const Entry& entry : entries_) {
        const Place at = fit_(*entry.control);
        entry.widget->setGeometry(scale.rectangle(at.left, at.top, at.width, at.height));
        if (auto* label = dynamic_cast<QLabel*>(entry.widget); label && label->wordWrap() && !label->text().isEmpty())
            texts.push_back(label);
    }
    double points = std::numeric_limits<double>::max(); // the texts of a window are of one size
    for (const QLabel* label : texts) points = std::min(points, fitting_points(*label));
    for (QLabel* label : texts) {
        QFont font = label->font();
        font.setPointSizeF(points);
        label->setFont(font);
    }
}

void FormLayout::set_fonts(const Theme& theme, const Scale& scale) const
{
    for (const Entry& entry : entries_) entry.widget->setFont(theme.font(entry.role, scale));
}

} // namespace tarvik

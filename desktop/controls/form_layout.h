#pragma once

#include "desktop/front/front.h"

#include <functional>
#include <vector>

namespace tarvik {

/// Twips, from the corner of the window or frame that the control stands in.
struct Place {
    double left, top, width, height;
    friend bool operator==(const Place&, const Place&) = default;
};

inline Place place_of(const Control& control)
{
    return {control.left(), control.top(), control.width(), control.height()};
}

/// Where the controls of a window stand and in which font.
class FormLayout {
public:
    /// `fit` may move a control from the place that the model gives.
    explicit FormLayout(std::function<Place(const Control&)> fit = place_of) : fit_(std::move(fit)) {}

    void add(const Control& control, QWidget& widget, FontRole role) { entries_.push_back({&control, &widget, role}); }
    void place(const Scale& scale) const;
    void set_fonts(const Theme& theme, const Scale& scale) const;

private:
    struct Entry {
        const Control* control;
        QWidget* widget;
        FontRole role;
    };
    std::function<Place(const Control&)> fit_;
    std::vector<Entry> entries_;
};

} // namespace tarvik

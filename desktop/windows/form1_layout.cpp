#include "desktop/windows/form1_layout.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr double gap = 45; // between neighbours, three dots of the design
constexpr double window_edge = 100;
constexpr double frame_contents = 1080; // the keys of the highest frame end here

Place number_box_place(const Form1& form1)
{
    Place place = place_of(form1.number_box());
    const Place corner = place_of(form1.Command2[4]);
    const bool beside = corner.left >= place.left + place.width || corner.left + corner.width <= place.left;
    const double room = corner.top - gap - place.top;
    if (!beside && room > 0) place.height = std::min(place.height, room);
    return place;
}

Place frame_place(const Form1& form1, const Control& frame)
{
    double edge = form1.window.width() - window_edge;
    Place place{};
    for (const Control* each : {&form1.Frame2, &form1.Frame3, &form1.Frame4, &form1.Frame1}) {
        place = place_of(*each);
        place.left = std::min(place.left, edge - place.width);
        edge = place.left - gap;
        const double room = form1.window.height() - status_height - gap - place.top;
        const double least = std::min(frame_contents + gap, place.height);
        place.top -= std::clamp(least - room, 0.0, 2 * gap);
        place.height = std::clamp(room, least, place.height);
        if (each == &frame) break;
    }
    return place;
}

// Three full-width signs, as some fonts have them, take more than the model's width.
Place page_button_place(const Control& button)
{
    constexpr double wider = 200;
    Place place = place_of(button);
    if (place.left > 0) place.left -= wider / 4;
    place.width = std::max(place.width, 732 + wider);
    return place;
}

} // namespace

Place fitted_place(const Form1& form1, const Control& control)
{
    if (&control == &form1.number_box()) return number_box_place(form1);
    if (&control == &form1.Command2[0] || &control == &form1.Command2[1]) return page_button_place(control);
    for (const Control* frame : {&form1.Frame1, &form1.Frame2, &form1.Frame3, &form1.Frame4})
        if (&control == frame) return frame_place(form1, *frame);
    return place_of(control);
}

} // namespace tarvik

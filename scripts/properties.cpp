#include "scripts/properties.h"

#include <algorithm>

namespace tarvik {

namespace {

template <typename Kind>
struct PropertyRow {
    std::string_view name;
    Value (*read)(const Kind&);
};

template <typename Kind, auto Getter>
Value read(const Kind& control)
{
    return to_value((control.*Getter)());
}

Value marks_of(const Pane& pane)
{
    std::vector<Mark> marks = pane.marks();
    std::ranges::stable_sort(marks, {}, &Mark::start);
    ListValue list{"["};
    for (const Mark& mark : marks) {
        if (list.json.size() > 1) list.json += ',';
        list.json += '[' + std::to_string(mark.start.number()) + ',' + std::to_string(mark.length) + ',' +
                     std::to_string(mark.colour) + ',' + std::to_string(mark.size) + ']';
    }
    list.json += ']';
    return list;
}

template <typename Kind>
constexpr PropertyRow<Kind> selection_start{"SelStart",
                                            [](const Kind& box) { return to_value(box.selection().start.number()); }};
template <typename Kind>
constexpr PropertyRow<Kind> selection_length{"SelLength",
                                             [](const Kind& box) { return to_value(box.selection().length); }};
template <typename Kind>
constexpr PropertyRow<Kind> selected_text{"SelText", read<Kind, &Kind::selected_text>};

// What all controls that can be seen have.
constexpr PropertyRow<Control> common[] = {
    {"Visible", read<Control, &Control::visible>},
    {"Enabled", read<Control, &Control::enabled>},
    {"Left", read<Control, &Control::left>},
    {"Top", read<Control, &Control::top>},
    {"Width", read<Control, &Control::width>},
    {"Height", read<Control, &Control::height>},
    {"BackColor", read<Control, &Control::back_color>},
};
constexpr PropertyRow<Control> captioned[] = {{"Caption", read<Control, &Control::caption>}};
constexpr PropertyRow<Window> window_rows[] = {{"WindowState", read<Window, &Window::window_state>}};
constexpr PropertyRow<OptionButton> option_rows[] = {{"Value", read<OptionButton, &OptionButton::value>}};
constexpr PropertyRow<Timer> timer_rows[] = {{"Enabled", read<Timer, &Timer::enabled>},
                                             {"Interval", read<Timer, &Timer::interval>}};
constexpr PropertyRow<TextBox> box_rows[] = {
    {"Text", read<TextBox, &TextBox::text>},
    selection_start<TextBox>,
    selection_length<TextBox>,
    selected_text<TextBox>,
};
constexpr PropertyRow<Pane> pane_rows[] = {
    {"Text", [](const Pane& pane) -> Value { return pane.text().str(); }},
    selection_start<Pane>,
    selection_length<Pane>,
    selected_text<Pane>,
    {"SelColor", read<Pane, &Pane::selection_colour>},
    {"SelFontSize", read<Pane, &Pane::selection_font_size>},
    {"Marks", marks_of},
};

// Calls `visit` with the rows that the control's kind has.
template <typename Kind, typename Visit>
void visit_rows(const Kind*, Visit&& visit)
{
    if constexpr (std::same_as<Kind, Timer>) visit(timer_rows);
    else visit(common);
    if constexpr (std::same_as<Kind, TextBox>) visit(box_rows);
    else if constexpr (std::same_as<Kind, Pane>) visit(pane_rows);
    else if constexpr (!std::same_as<Kind, Timer>) visit(captioned);
    if constexpr (std::same_as<Kind, Window>) visit(window_rows);
    if constexpr (std::same_as<Kind, OptionButton>) visit(option_rows);
}

} // namespace

std::function<Value()> property_reader(const AnyControl& any, std::string_view property)
{
    std::function<Value()> reader;
    const auto look_in = [&](auto* control) {
        visit_rows(control, [&](const auto& rows) {
            for (const auto& row : rows)
                if (row.name == property) reader = [read_row = row.read, control] { return read_row(*control); };
        });
    };
    std::visit(look_in, any);
    return reader;
}

std::vector<std::string_view> property_names(const AnyControl& any)
{
    std::vector<std::string_view> names;
    const auto list = [&](auto* control) {
        visit_rows(control, [&](const auto& rows) {
            for (const auto& row : rows) names.push_back(row.name);
        });
    };
    std::visit(list, any);
    return names;
}

} // namespace tarvik

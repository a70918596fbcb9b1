#include "scripts/names.h"

namespace tarvik {

namespace {

constexpr std::string_view main_window_prefix = "Form1.";

constexpr std::string_view window_names[] = {"Form1", "Form3", "Form4"}; // by FormId

bool is_any(const Control&)
{
    return true;
}

template <typename Kind>
bool is(const Control& control)
{
    return dynamic_cast<const Kind*>(&control) != nullptr;
}

bool is_seen(const Control& control)
{
    return !is<Timer>(control);
}

bool has_caption(const Control& control)
{
    return is_seen(control) && !is<TextControl>(control);
}

template <typename Kind, auto Getter>
ScriptValue read(const Control& control)
{
    return to_value((dynamic_cast<const Kind&>(control).*Getter)());
}

const TextControl& box(const Control& control)
{
    return dynamic_cast<const TextControl&>(control);
}

ScriptValue marks_of(const Control& control)
{
    std::vector<Mark> marks = dynamic_cast<const Pane&>(control).marks();
    std::ranges::stable_sort(marks, {}, &Mark::start);
    std::string list = "[";
    for (const Mark& mark : marks) {
        if (list.size() > 1) list += ',';
        list += '[' + std::to_string(mark.start.number()) + ',' + std::to_string(mark.length) + ',' +
                std::to_string(mark.colour) + ',' + std::to_string(mark.size) + ']';
    }
    return {list + ']'};
}

constexpr ControlProperty properties[] = {
    {"Visible", is_seen, read<Control, &Control::visible>},
    {"Enabled", is_any, read<Control, &Control::enabled>},
    {"Left", is_seen, read<Control, &Control::left>},
    {"Top", is_seen, read<Control, &Control::top>},
    {"Width", is_seen, read<Control, &Control::width>},
    {"Height", is_seen, read<Control, &Control::height>},
    {"BackColor", is_seen, read<Control, &Control::back_color>},
    {"Interval", is<Timer>, read<Timer, &Timer::interval>},
    {"Text", is<TextControl>, [](const Control& c) { return to_value(box(c).content().view()); }},
    {"SelStart", is<TextControl>, [](const Control& c) { return to_value(box(c).selection().start.number()); }},
    {"SelLength", is<TextControl>, [](const Control& c) { return to_value(box(c).selection().length); }},
    {"SelText", is<TextControl>, [](const Control& c) { return to_value(box(c).selected_text().view); }},
    {"SelColor", is<Pane>, read<Pane, &Pane::selection_colour>},
    {"SelFontSize", is<Pane>, read<Pane, &Pane::selection_font_size>},
    {"Marks", is<Pane>, marks_of},
    {"Caption", has_caption, read<Control, &Control::caption>},
    {"WindowState", is<Window>, read<Window, &Window::window_state>},
    {"Value", is<OptionButton>, read<OptionButton, &OptionButton::value>},
};

} // namespace

std::string script_name(const Control& control)
{
    std::string name(control.name());
    const std::string window(window_names[static_cast<std::size_t>(control.form())]);
    if (control.form() != FormId::Form1 && name != window) name = window + "." + name;
    if (control.index() != no_index) name += "(" + std::to_string(control.index()) + ")";
    return name;
}

Control* find_control(const Program& program, std::string_view name)
{
    if (name.starts_with(main_window_prefix)) {
        name.remove_prefix(main_window_prefix.size());
        if (name.starts_with("Form")) return nullptr;
    }
    const auto& controls = program.listeners.controls;
    const auto found = std::ranges::find(controls, name, [](const Control* one) { return script_name(*one); });
    return found == controls.end() ? nullptr : *found;
}

std::span<const ControlProperty> control_properties()
{
    return properties;
}

} // namespace tarvik

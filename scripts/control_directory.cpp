#include "scripts/control_directory.h"

#include "scripts/script.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::string_view main_window_prefix = "Form1.";

std::string_view window_name(FormId form)
{
    switch (form) {
    case FormId::Form1: return "Form1";
    case FormId::Form3: return "Form3";
    case FormId::Form4: return "Form4";
    }
    return {};
}

template <typename Kind>
struct PropertyRow {
    std::string_view name;
    ScriptValue (*read)(const Kind&);
};

template <typename Kind, auto Getter>
ScriptValue read(const Kind& control)
{
    return to_value((control.*Getter)());
}

ScriptValue marks_of(const Pane& pane)
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
    {"Text", [](const Pane& pane) -> ScriptValue { return pane.text().str(); }},
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

std::string script_name(const Control& control)
{
    std::string name(control.name());
    if (control.form() != FormId::Form1 && name != window_name(control.form()))
        name = std::string(window_name(control.form())) + "." + name;
    if (control.index() != no_index) name += "(" + std::to_string(control.index()) + ")";
    return name;
}

Control& as_control(const AnyControl& control)
{
    return std::visit([](auto* one) -> Control& { return *one; }, control);
}

template <typename Kind>
void ControlDirectory::add_one(Kind& control)
{
    names_.push_back(script_name(control));
    controls_.emplace(names_.back(), &control);
}

template <typename Kind>
void ControlDirectory::add_one(ControlArray<Kind>& array)
{
    for (auto& [index, control] : array) add_one(control);
}

ControlDirectory::ControlDirectory(Program& program)
{
    const auto add = [this](auto&... controls) { (add_one(controls), ...); };
    Form1& form1 = program.form1;
    add(form1.window, form1.Text1, form1.RichTextBox1, form1.RichTextBox2, form1.RichTextBox3);
    add(form1.Command1, form1.Command2, form1.Command3, form1.Command6, form1.Command7, form1.Command8, form1.Command9);
    add(form1.Option1, form1.Option2, form1.Option3);
    add(form1.Frame1, form1.Frame2, form1.Frame3, form1.Frame4, form1.Label1, form1.Label2);
    add(form1.Timer1);
    for (Timer* timer : form1.batch_timers()) add(*timer);
    Form3& form3 = program.form3;
    add(form3.window, form3.Text1, form3.Text2, form3.Command1, form3.Label1);
    Form4& form4 = program.form4;
    add(form4.window, form4.Text1, form4.Text2, form4.Text3, form4.Text4, form4.Command1, form4.Command2);
    add(form4.Command3, form4.Preview);
    add(form4.Frame1, form4.Frame2, form4.Frame3);
    add(form4.Label1, form4.Label2, form4.Label3, form4.Label4, form4.Label5);
}

const AnyControl* ControlDirectory::find(std::string_view name) const
{
    if (name.starts_with(main_window_prefix)) {
        name.remove_prefix(main_window_prefix.size());
        if (name.starts_with("Form")) return nullptr;
    }
    const auto found = controls_.find(name);
    return found == controls_.end() ? nullptr : &found->second;
}

const AnyControl& ControlDirectory::at(std::string_view name) const
{
    if (const AnyControl* control = find(name)) return *control;
    throw ScriptFailure("unknown control " + std::string(name));
}

Control& ControlDirectory::control(const Control& shown) const
{
    return as_control(at(script_name(shown)));
}

std::function<ScriptValue()> property_reader(const AnyControl& any, std::string_view property)
{
    std::function<ScriptValue()> reader;
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

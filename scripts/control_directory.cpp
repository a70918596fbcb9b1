#include "scripts/control_directory.h"

#include "scripts/script.h"

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

ControlDirectory::ControlDirectory(Program& program)
{
    list(program.form1);
    list(program.form3);
    list(program.form4);
}

void ControlDirectory::list(Form1& form1)
{
    add(form1.window, form1.Text1, form1.RichTextBox1, form1.RichTextBox2, form1.RichTextBox3);
    add(form1.Command1, form1.Command2, form1.Command3, form1.Command6, form1.Command7, form1.Command8, form1.Command9);
    add(form1.Option1, form1.Option2, form1.Option3);
    add(form1.Frame1, form1.Frame2, form1.Frame3, form1.Frame4, form1.Label1, form1.Label2);
    add(form1.Timer1);
    for (Timer* timer : form1.batch_timers()) add(*timer);
}

void ControlDirectory::list(Form3& form3)
{
    add(form3.window, form3.Text1, form3.Text2, form3.Command1, form3.Label1);
}

void ControlDirectory::list(Form4& form4)
{
    add(form4.window, form4.Text1, form4.Text2, form4.Text3, form4.Text4, form4.Command1, form4.Command2);
    add(form4.Command3, form4.Preview);
    add(form4.Frame1, form4.Frame2, form4.Frame3);
    add(form4.Label1, form4.Label2, form4.Label3, form4.Label4, form4.Label5);
}

template <typename... Kinds>
void ControlDirectory::add(Kinds&... controls)
{
    (add_one(controls), ...);
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

} // namespace tarvik

#include "events/events.h"

#include "columns/columns.h"
#include "designer/designer.h"
#include "events/commands.h"
#include "printing/page_box.h"
#include "reading/reading.h"
#include "runs/batch_runner.h"

#include <algorithm>
#include <new>

namespace tarvik {

namespace {

using Handler = void (*)(Program& program, Event& event);

constexpr int query_box = 1, page_box = 4;

struct Row {
    FormId form;
    std::string_view control;
    EventKind kind;
    Handler handle;
};

Pane& pane(Event& event)
{
    return dynamic_cast<Pane&>(event.control);
}

void pane_down(Program& program, Event& event)
{
    RichTextBox_MouseDown(program, pane(event), event.button, event.ctrl);
}

void pane_up(Program& program, Event& event)
{
    RichTextBox_MouseUp(program, pane(event));
}

void got_focus(Program& program, Event& event)
{
    focus_changed(program, event.control, true);
}

void lost_focus(Program& program, Event& event)
{
    focus_changed(program, event.control, false);
}

void batch_timer(Program& program, Event& event)
{
    batch_tick(program, event.control, batch_timers());
}

bool is_enter(const Event& event, int box)
{
    return event.key == U'\r' && event.control.index() == box;
}

// Give whether they know the key.
constexpr bool (*key_handlers[])(Program& program, Event& event) = {
    [](Program& p, Event& e) { return is_enter(e, query_box) && run_command(p, report_commands()); },
    [](Program& p, Event& e) { return e.control.index() == query_box && column_keys(p, e.key, e.eaten); },
    [](Program& p, Event& e) { return is_enter(e, page_box) && (print_by_name(p), true); },
    [](Program& p, Event& e) { return e.key == U'\r' && (query_by_enter(p), true); },
};

// The first handler that knows the key has it.
void Text1_KeyPress(Program& program, Event& event)
{
    event.known = true; // also when its work fails
    event.known = std::ranges::any_of(key_handlers, [&](auto* knows) { return knows(program, event); });
}

void empty_box(Program&, Event& event)
{
    empty_design_box(dynamic_cast<TextBox&>(event.control));
}

void close_main_window(Program& program, Event& event)
{
    event.cancelled = !Form_QueryUnload(program);
    if (!event.cancelled) Form_Unload(program);
}

using enum EventKind;
constexpr FormId Main = FormId::Form1;

constexpr Row rows[] = {
    {Main, "Form1", Click, [](Program& p, Event&) { Form_Click(p); }},
    {Main, "Form1", Resize, [](Program& p, Event&) { Form_Resize(p); }},
    {Main, "Form1", Close, close_main_window},
    {Main, "Form1", Menu, [](Program& p, Event& e) { menu_Click(p, e.entry); }},

    {Main, "Text1", KeyPress, Text1_KeyPress},
    {Main, "Text1", DblClick, [](Program& p, Event& e) { Text1_DblClick(p, e.control.index()); }},
    {Main, "Text1", MouseDown, [](Program& p, Event& e) { Text1_MouseDown(p, e.control.index(), e.button); }},
    {Main, "Text1", MouseUp, [](Program& p, Event& e) { Text1_MouseUp(p, e.control.index()); }},
    {Main, "Text1", GotFocus, got_focus},
    {Main, "Text1", LostFocus, lost_focus},

    {Main, "RichTextBox1", MouseDown, pane_down},
    {Main, "RichTextBox1", MouseUp, pane_up},
    {Main, "RichTextBox1", GotFocus, got_focus},
    {Main, "RichTextBox1", LostFocus, lost_focus},
    {Main, "RichTextBox2", MouseDown, pane_down},
    {Main, "RichTextBox2", MouseUp, pane_up},
    {Main, "RichTextBox2", GotFocus, got_focus},
    {Main, "RichTextBox2", LostFocus, lost_focus},
    {Main, "RichTextBox3", MouseDown, pane_down},
    {Main, "RichTextBox3", MouseUp, pane_up},
    {Main, "RichTextBox3", GotFocus, got_focus},
    {Main, "RichTextBox3", LostFocus, lost_focus},

    {Main, "Command1", Click, [](Program& p, Event& e) { Command1_Click(p, e.control.index()); }},
    {Main, "Command2", Click, [](Program& p, Event& e) { Command2_Click(p, e.control.index()); }},
    {Main, "Command2", MouseDown, [](Program& p, Event& e) { Command2_MouseDown(p, e.control.index()); }},
    {Main, "Command2", MouseUp, [](Program& p, Event& e) { Command2_MouseUp(p, e.control.index()); }},
    {Main, "Command3", Click, [](Program& p, Event&) { Command3_Click(p); }},
    {Main, "Command6", Click, [](Program& p, Event&) { Command6_Click(p); }},
    {Main, "Command7", Click, [](Program& p, Event& e) { Command7_Click(p, e.control.index()); }},
    {Main, "Command8", Click, [](Program& p, Event& e) { Command8_Click(p, e.control.index()); }},
    {Main, "Command9", Click, [](Program& p, Event& e) { Command9_Click(p, e.control.index()); }},
    {Main, "Option1", Click, [](Program& p, Event&) { Option1_Click(p); }},
    {Main, "Option2", Click, [](Program& p, Event&) { Option2_Click(p); }},
    {Main, "Option3", Click, [](Program& p, Event&) { Option3_Click(p); }},

    {Main, "Timer1", Tick, [](Program& p, Event& e) { Timer1_Timer(p, e.control.index()); }},
    {Main, "Timer3", Tick, batch_timer},
    {Main, "Timer4", Tick, batch_timer},
    {Main, "Timer5", Tick, batch_timer},
    {Main, "Timer6", Tick, batch_timer},
    {Main, "Timer7", Tick, batch_timer},
    {Main, "Timer8", Tick, batch_timer},
    {Main, "Timer9", Tick, batch_timer},
    {Main, "Timer10", Tick, batch_timer},

    {FormId::Form3, "Command1", Click, [](Program& p, Event& e) { Form3_Command1_Click(p, e.control.index()); }},
    {FormId::Form3, "Form3", Resize, [](Program& p, Event&) { Form3_Resize(p); }},
    {FormId::Form3, "Form3", Close, [](Program& p, Event&) { Form3_Close(p); }},

    {FormId::Form4, "Text1", Click, empty_box},
    {FormId::Form4, "Text1", DblClick, empty_box},
    {FormId::Form4, "Text2", Click, empty_box},
    {FormId::Form4, "Text2", DblClick, empty_box},
    {FormId::Form4, "Text3", DblClick, empty_box},
    {FormId::Form4, "Text4", DblClick, empty_box},
    {FormId::Form4, "Command1", Click, [](Program& p, Event&) { Form4_Command1_Click(p); }},
    {FormId::Form4, "Command2", Click, [](Program& p, Event&) { Form4_Command2_Click(p); }},
    {FormId::Form4, "Command3", Click, [](Program& p, Event&) { Form4_Command3_Click(p); }},
    {FormId::Form4, "Preview", Click, [](Program& p, Event&) { Form4_Preview_Click(p); }},
    {FormId::Form4, "Text1", GotFocus, [](Program& p, Event& e) { Form4_GotFocus(p, e.control); }},
    {FormId::Form4, "Text2", GotFocus, [](Program& p, Event& e) { Form4_GotFocus(p, e.control); }},
    {FormId::Form4, "Text3", GotFocus, [](Program& p, Event& e) { Form4_GotFocus(p, e.control); }},
    {FormId::Form4, "Text4", GotFocus, [](Program& p, Event& e) { Form4_GotFocus(p, e.control); }},
    {FormId::Form4, "Form4", Close, [](Program& p, Event&) { Form4_Unload(p); }},
};

Handler find_handler(const Event& event)
{
    for (const Row& row : rows)
        if (row.kind == event.kind && row.form == event.control.form() && row.control == event.control.name())
            return row.handle;
    return nullptr;
}

} // namespace

void start(Program& program)
{
    program.listeners.text_changed = [&program](TextBox& box) {
        if (box.form() == FormId::Form1 && box.name() == "Text1") Text1_Change(program, box.index());
    };
    Form_Load(program);
}

bool has_handler(const Event& event)
{
    return find_handler(event) != nullptr;
}

void dispatch(Program& program, Event& event)
{
    const Handler handle = find_handler(event);
    if (!handle) return;
    if (!run_in_progress(program.form1)) program.scratch_failures.clear();
    try {
        handle(program, event);
    } catch (const Failure& failure) {
        tell(program, failure.message());
    } catch (const std::bad_alloc&) {
        tell(program, U" 请注意：\r\n内存不足，操作没有完成。");
    }
}

} // namespace tarvik

#include "events/events.h"

#include "calendar/attendance/attendance.h"
#include "columns/columns.h"
#include "designer/designer.h"
#include "dockets/dockets.h"
#include "lists/lists.h"
#include "printing/page_box.h"
#include "reading/reading.h"
#include "repair_rules/repair_commands.h"

#include <algorithm>
#include <array>
#include <new>

namespace tarvik {

namespace {

using Handler = void (*)(Program& program, Event& event);

constexpr int query_box = 1, page_box = 4;

struct Row {
    FormId form;
    std::array<std::string_view, 8> controls; ///< with one handler for all
    EventKind kind;
    Handler handle;
};

Pane& pane(Event& event)
{
    return dynamic_cast<Pane&>(event.control);
}

bool is_enter(const Event& event, int box)
{
    return event.key == U'\r' && event.control.index() == box;
}

// The sheets that a batch timer works on.
const SheetFamily& family_of(Form1& form1, const Control& timer)
{
    const auto reports = report_commands().reports;
    return std::ranges::find_if(reports,
                                [&](const ReportCommand& command) {
                                    return command.sheets.timer && &(form1.*command.sheets.timer) == &timer;
                                })
        ->sheets;
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

// A number box of the design, its query text or key column.
void empty_box(Program&, Event& event)
{
    dynamic_cast<TextBox&>(event.control).set_text({});
}

void close_main_window(Program& program, Event& event)
{
    event.cancelled = !Form_QueryUnload(program);
    if (!event.cancelled) Form_Unload(program);
}

using enum EventKind;
constexpr FormId Main = FormId::Form1;

constexpr std::array<std::string_view, 8> panes{"RichTextBox1", "RichTextBox2", "RichTextBox3"};
constexpr std::array<std::string_view, 8> boxes{"Text1", "RichTextBox1", "RichTextBox2", "RichTextBox3"};

constexpr Row rows[] = {
    {Main, {"Form1"}, Click, [](Program& p, Event&) { Form_Click(p); }},
    {Main, {"Form1"}, Resize, [](Program& p, Event&) { Form_Resize(p); }},
    {Main, {"Form1"}, Close, close_main_window},
    {Main, {"Form1"}, Menu, [](Program& p, Event& e) { menu_Click(p, e.entry); }},

    {Main, {"Text1"}, KeyPress, Text1_KeyPress},
    {Main, {"Text1"}, DblClick, [](Program& p, Event& e) { Text1_DblClick(p, e.control.index()); }},
    {Main, {"Text1"}, MouseDown, [](Program& p, Event& e) { Text1_MouseDown(p, e.control.index(), e.button); }},
    {Main, {"Text1"}, MouseUp, [](Program& p, Event& e) { Text1_MouseUp(p, e.control.index()); }},
    {Main, panes, MouseDown, [](Program& p, Event& e) { RichTextBox_MouseDown(p, pane(e), e.button, e.ctrl); }},
    {Main, panes, MouseUp, [](Program& p, Event& e) { RichTextBox_MouseUp(p, pane(e)); }},
    {Main, boxes, GotFocus, [](Program& p, Event& e) { focus_changed(p, e.control, true); }},
    {Main, boxes, LostFocus, [](Program& p, Event& e) { focus_changed(p, e.control, false); }},

    {Main, {"Command1"}, Click, [](Program& p, Event& e) { Command1_Click(p, e.control.index()); }},
    {Main, {"Command2"}, Click, [](Program& p, Event& e) { Command2_Click(p, e.control.index()); }},
    {Main, {"Command2"}, MouseDown, [](Program& p, Event& e) { Command2_MouseDown(p, e.control.index()); }},
    {Main, {"Command2"}, MouseUp, [](Program& p, Event& e) { Command2_MouseUp(p, e.control.index()); }},
    {Main, {"Command3"}, Click, [](Program& p, Event&) { Command3_Click(p); }},
    {Main, {"Command6"}, Click, [](Program& p, Event&) { Command6_Click(p); }},
    {Main, {"Command7"}, Click, [](Program& p, Event& e) { Command7_Click(p, e.control.index()); }},
    {Main, {"Command8"}, Click, [](Program& p, Event& e) { Command8_Click(p, e.control.index()); }},
    {Main, {"Command9"}, Click, [](Program& p, Event& e) { Command9_Click(p, e.control.index()); }},
    {Main,
     {"Option1", "Option2", "Option3"},
     Click,
     [](Program& p, Event& e) { Option_Click(p, dynamic_cast<OptionButton&>(e.control)); }},

    {Main, {"Timer1"}, Tick, [](Program& p, Event& e) { Timer1_Timer(p, e.control.index()); }},
    {Main,
     {"Timer3", "Timer4", "Timer5", "Timer6", "Timer7", "Timer8", "Timer9", "Timer10"},
     Tick,
     [](Program& p, Event& e) { batch_tick(p, family_of(p.form1, e.control)); }},

    {FormId::Form3, {"Command1"}, Click, [](Program& p, Event& e) { Form3_Command1_Click(p, e.control.index()); }},
    {FormId::Form3, {"Form3"}, Resize, [](Program& p, Event&) { Form3_Resize(p); }},
    {FormId::Form3, {"Form3"}, Close, [](Program& p, Event&) { Form3_Close(p); }},

    {FormId::Form4, {"Text1", "Text2"}, Click, empty_box},
    {FormId::Form4, {"Text1", "Text2", "Text3", "Text4"}, DblClick, empty_box},
    {FormId::Form4,
     {"Text1", "Text2", "Text3", "Text4"},
     GotFocus,
     [](Program& p, Event& e) { Form4_GotFocus(p, e.control); }},
    {FormId::Form4, {"Command1"}, Click, [](Program& p, Event&) { Form4_Command1_Click(p); }},
    {FormId::Form4, {"Command2"}, Click, [](Program& p, Event&) { Form4_Command2_Click(p); }},
    {FormId::Form4, {"Command3"}, Click, [](Program& p, Event&) { Form4_Command3_Click(p); }},
    {FormId::Form4, {"Preview"}, Click, [](Program& p, Event&) { Form4_Preview_Click(p); }},
    {FormId::Form4, {"Form4"}, Close, [](Program& p, Event&) { Form4_Unload(p); }},
};

Handler find_handler(const Event& event)
{
    for (const Row& row : rows)
        if (row.kind == event.kind && row.form == event.control.form() &&
            std::ranges::find(row.controls, event.control.name()) != row.controls.end())
            return row.handle;
    return nullptr;
}

} // namespace

CommandTable report_commands()
{
    static constexpr ImmediateCommand immediate[] = {
        {.text = U"An kqtest", .run = an_kqtest, .during_runs = false},
        {.text = U"An disappear", .run = [](Program& p) { p.form4.window.set_visible(false); }},
        {.text = U"An appear", .run = [](Program& p) { p.form4.window.set_visible(true); }},
        {.text = U"An statistic", .run = list_characters},
    };
    // One row a line, in the order in which they are tested
    // clang-format off
    static const std::array reports{
        order_command,
        prices_command,
        keptfile_command,
        excelfile_command,
        tomation_command,
        sesame_open_command,
        docket_command,
        service_bill_command,
        service_list_command,
        service_summary_command,
        repair_report_command,
        test_docket_command,
        template_command_a,
        template_command_b,
        label_command,
    };
    // clang-format on
    return {immediate, reports};
}

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

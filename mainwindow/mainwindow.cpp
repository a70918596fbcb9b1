#include "mainwindow/mainwindow.h"

#include "mainwindow/installation_files.h"
#include "platform/text/code_page.h"

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

namespace tarvik {

namespace {

constexpr Colour window_colour = rgb(232, 227, 174);
constexpr Colour frame_colour = rgb(215, 198, 149);

// From the fonts on, start-up goes past whatever fails: the window comes up with what there is.
void pass_over_failure(const std::function<void()>& step)
{
    try {
        step();
    } catch (const std::exception&) {
        return;
    }
}

void reset_designer_boxes(Form4& form4)
{
    for (int i = 0; i <= Form4::last_box; ++i) {
        form4.load(form4.Text1[i], U"-1");
        form4.load(form4.Text2[i], U"-1");
    }
    form4.window.set_visible(false);
}

void reset_members(Form1& form1)
{
    for (const auto& [owner, flag] : form1.focus_flags()) *flag = false;
    form1.menuonquery = form1.menuonnumber = false;
    form1.dbresult = form1.notcap = form1.cutopenfile = form1.cutopen = form1.comp = false;
    form1.showdata = true;
    form1.resultcount = 0;
    form1.pageno = 0;
    form1.resultpos = 0;
}

void show_opening_screen(Program& program)
{
    pass_over_failure([&] {
        const std::string bytes = program.platform.files.read(installed(program, U"coclus.txt"));
        program.form1.RichTextBox2.set_content(PaneText(recognise_foreign(bytes).document));
    });
}

void colour_controls(Form1& form1)
{
    std::vector<Control*> painted{&form1.window,  &form1.Option1,  &form1.Option2,
                                  &form1.Option3, &form1.Command6, &form1.Command3};
    for (auto* array : {&form1.Command1, &form1.Command2, &form1.Command7, &form1.Command8, &form1.Command9})
        for (auto& [index, control] : *array) painted.push_back(&control);
    for (int index : {1, 2, 4, 5}) painted.push_back(&form1.Text1[index]);
    for (Pane* pane : form1.panes()) painted.push_back(pane);
    for (Control* control : painted) control->set_back_color(window_colour);
    for (Control* frame : form1.frames()) frame->set_back_color(frame_colour);
}

// What shows in one mode only. Opening and saving stay in both.
void show_queries(Form1& form1, bool visible)
{
    for (int index : {1, 2, 3}) form1.Command1[index].set_visible(visible);
    for (OptionButton* option : form1.options()) option->set_visible(visible);
}

void show_frames(Form1& form1, bool visible)
{
    for (Control* frame : form1.frames()) frame->set_visible(visible);
}

void enter_analysis(Form1& form1)
{
    form1.Command6.set_caption(U"还原默认");
    form1.Command3.set_visible(true);
    show_queries(form1, false);
    show_frames(form1, true);
}

void leave_analysis(Form1& form1)
{
    form1.Command3.set_visible(false);
    form1.Command6.set_caption(U"数据分析");
    show_frames(form1, false);
    show_queries(form1, true);
}

} // namespace

Answer tell(Program& program, TextView text, TextView title, Icon icon)
{
    return ask(program, text, title, Buttons::OK, icon);
}

Answer ask(Program& program, TextView text, TextView title, Buttons buttons, Icon icon)
{
    const Answer answer = program.platform.dialogs.message({text.str(), title.str(), buttons, icon});
    program.form1.answer = static_cast<int>(answer);
    return answer;
}

Text installed(const Program& program, TextView name)
{
    return path_in(program.platform.files.installation_folder(), name);
}

Document load_document(Program& program, TextView path)
{
    const Files& files = program.platform.files;
    return program.documents.get(path, files.stamp(path), [&] {
        return recognise_foreign([&] { return files.open_for_input(path); }).document;
    });
}

double min3to1(double a, double b, double c)
{
    std::array sorted{a, b, c};
    std::ranges::sort(sorted);
    const auto first = std::ranges::find_if(sorted, [](double value) { return value != 0; });
    return first == sorted.end() ? 0 : *first;
}

void Form_Load(Program& program)
{
    Form1& form1 = program.form1;
    form1.Command3.set_visible(false);
    program.module1.analysismode = program.module1.designeropen = false;
    show_frames(form1, false);
    form1.scanfolderset = false;
    reset_designer_boxes(program.form4);
    form1.batchgate = true;
    reset_members(form1);
    program.form3.window.set_visible(false);
    form1.fieldfrom = leading_number(program.form3.Text1[1].text());
    form1.fieldto = leading_number(program.form3.Text1[2].text());
    for (Pane* pane : form1.panes()) pane->line_breaking = pane == &form1.RichTextBox1;
    for (auto& [index, timer] : form1.Timer1) timer.set_enabled(false);
    show_opening_screen(program);
    form1.query_box().set_text(U"查寻条件");
    form1.number_box().set_text(U"数目");
    for (Pane* pane : {&form1.RichTextBox2, &form1.RichTextBox3}) pane->set_place(form1.RichTextBox1.place());
    colour_controls(form1);
    bring_up(form1, form1.RichTextBox2);
    opening_animation(program, program.platform.screen.width());
    form1.formready = true;
    pass_over_failure([&] { program.platform.files.create_folder(files::default_output); });
    form1.window.set_visible(true);
}

bool Form_QueryUnload(Program& program)
{
    if (program.form1.exit_confirmed) return true;
    if (ask(program, U"是否退出Tarvik 计算？", application_title, Buttons::YesNo) != Answer::Yes) return false;
    program.form1.exit_confirmed = true;
    return true;
}

void Form_Unload(Program& program)
{
    for (Window* window : {&program.form3.window, &program.form4.window, &program.form1.window})
        window->set_visible(false);
    program.form4.Preview.set_visible(false);
    program.module1.designeropen = false;
    program.ended = true;
}

void Form_Click(Program& program)
{
    Form1& form1 = program.form1;
    bring_up(form1, form1.RichTextBox2);
    form1.cutopenfile = form1.scanfolderset = form1.cutopen = form1.comp = form1.dbresult = form1.notcap = false;
    form1.showdata = true;
    clear_options(form1);
    forget_results(program);
    program.notice = U"已恢复默认设置";
}

void forget_results(Program& program)
{
    program.form1.resultpos = 0;
    const auto last = static_cast<std::size_t>(program.form1.resultcount);
    Module1& arrays = program.module1;
    for (TextArray* results : {&arrays.enhits, &arrays.zhhits, &arrays.cnhits, &arrays.filehits})
        results->clear(0, last);
}

void Command6_Click(Program& program)
{
    bool& analysismode = program.module1.analysismode;
    analysismode = !analysismode;
    if (analysismode) {
        enter_analysis(program.form1);
        return;
    }
    leave_analysis(program.form1);
    Form_Click(program);
}

void Command3_Click(Program& program)
{
    bool& designeropen = program.module1.designeropen;
    designeropen = !designeropen;
    program.form4.window.set_visible(designeropen);
}

void Text1_Change(Program& program, int index)
{
    if (index != 1) return;
    program.form1.cutopenfile = false;
    forget_results(program);
}

void Text1_DblClick(Program& program, int index)
{
    if (index == 1 || index == 2 || index == 4) program.form1.Text1[index].set_text({});
}

void Option_Click(Program& program, OptionButton& option)
{
    Form1& form1 = program.form1;
    select_option(form1, option);
    if (&option == &form1.Option3) form1.cutopenfile = false;
    else form1.resultpos = 0;
}

void focus_changed(Program& program, const Control& control, bool has_focus)
{
    for (const auto& [owner, flag] : program.form1.focus_flags())
        if (owner == &control) *flag = has_focus;
}

} // namespace tarvik

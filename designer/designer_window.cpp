#include "designer/designer.h"

#include "designer/design/design.h"
#include "mainwindow/installation_files.h"
#include "platform/text/code_page.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr std::u32string_view title = U"Tarvik报表自动化设计";
constexpr std::size_t most_named = 10; // a message must fit the screen

/// A question of which the three buttons are the three parameter files.
std::u32string_view ask_file(Program& program, std::u32string_view question)
{
    switch (ask(program, question, title, Buttons::YesNoCancel)) {
    case Answer::Yes: return files::design_a;
    case Answer::No: return files::design_live;
    case Answer::Cancel: return files::design_b;
    default: return {};
    }
}

// A box as the user sees it: in one of two frames, whose rows show two boxes of Text1 and two of Text2.
Text seen_as(const Form4& form4, const TextBox& box)
{
    if (&box == &form4.Text3) return U"query框";
    if (&box == &form4.Text4) return U"“1”框";
    const int in_row = box.index() % 2 + (box.name() == form4.Text1[0].name() ? 1 : 3);
    return design_row_name(box.index()) + U" 第" + number_text(in_row) + U"框";
}

void fill_empty_boxes(Program& program)
{
    std::vector<TextBox*> boxes = program.form4.design_boxes();
    boxes.erase(boxes.begin()); // the query text may be empty
    std::erase_if(boxes, [](const TextBox* box) { return !box->text().empty(); });
    if (boxes.empty()) return;
    Text text = U" 请注意：\r\n下列框没有填写，按“0”保存：";
    for (std::size_t i = 0; i < boxes.size() && i < most_named; ++i)
        text += U"\r\n" + seen_as(program.form4, *boxes[i]);
    if (boxes.size() > most_named) text += U"\r\n等" + number_text(boxes.size()) + U"个框";
    for (TextBox* box : boxes) box->set_text(U"0");
    tell(program, text, title);
}

void show_help(Form4& form4, bool shown)
{
    for (Control* label : {&form4.Label1, &form4.Label2, &form4.Label3, &form4.Label4, &form4.Label5})
        label->set_visible(shown);
}

} // namespace

void Form4_Command1_Click(Program& program)
{
    Form4& form4 = program.form4;
    const bool agreed = ask(program, U"是否需要保存更改默认的设计参数?", title, Buttons::OKCancel) == Answer::OK;
    show_help(form4, agreed);
    if (!agreed) return;
    fill_empty_boxes(program);
    const auto file = ask_file(
        program, U"保存参数信息说明：选择NO按钮，代表保存到automation3.bin,适用于An tomation  "
                 U"提取设计参数，选择YES按钮，代表保存到automation.bin,适用于An testsesame A  "
                 U"提取设计参数，选择Cancel按钮，代表保存参数到automation2.bin 文件，适用于An testsesame B 提取参数。");
    if (file.empty()) return; // nobody answered
    program.platform.files.replace(installed(program, file), encode(design_line(form4)));
    form4.boxes_are_kept();
    program.notice = U"设计已保存到 " + Text(file);
    const auto has_asterisk = [](const TextBox* box) { return box->text().find(U'*') != Text::npos; };
    if (std::ranges::any_of(form4.design_boxes(), has_asterisk))
        program.notice += U"；框中有“*”，读回时其后的各框会错位";
}

void Form4_Command2_Click(Program& program)
{
    const auto file = ask_file(
        program, U"校验参数信息说明：选择NO按钮，代表校验文件automation3.bin,适用于An tomation  "
                 U"提取设计参数，选择YES按钮，代表校验文件automation.bin,适用于An testsesame A  "
                 U"提取设计参数，选择Cancel按钮，代表校验参数文件automation2.bin ，适用于An testsesame B 提取参数。");
    if (!file.empty()) load_design(program, file);
}

void Form4_Unload(Program& program)
{
    program.module1.designeropen = false;
    program.form4.window.set_visible(false);
    program.form4.Preview.set_visible(false);
    show_help(program.form4, true);
    load_design_texts(program.form4);
}

} // namespace tarvik

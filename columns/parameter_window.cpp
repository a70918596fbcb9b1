#include "columns/columns.h"

#include "platform/text/code_page.h"

#include <array>
#include <cmath>

namespace tarvik {

namespace {

constexpr std::u32string_view notes_file = U"admin123456.txt";

Document read_notes(Program& program)
{
    const Files& files = program.platform.files;
    const Text path = installed(program, notes_file);
    if (!files.file_exists(path)) return {};
    return decode_own(files.read(path));
}

void show_boxes(Form3& form3, bool visible)
{
    for (auto& [index, box] : form3.Text1) box.set_visible(visible);
    for (auto& [index, label] : form3.Label1) label.set_visible(visible);
}

void save_notes(Program& program)
{
    program.platform.files.replace(installed(program, notes_file), encode(program.form3.Text2.text()) + "\r\n");
}

void confirm(Program& program)
{
    Form3& form3 = program.form3;
    if (!form3.Text2.visible()) form3.window.set_window_state(1);
    else if (ask(program, U"此将保存Tarvik 计算说明的更改?", U"Tarvik 计算", Buttons::OKCancel) == Answer::OK)
        save_notes(program);
    form3.Text2.set_visible(false);
    show_boxes(form3, true);
}

/// What the boxes of the parameter window mean to whoever reads its help texts.
constexpr std::array<std::u32string_view, 6> meanings{
    U"列值 A（字段内查寻的列）",
    U"列值 B（字段内查寻的首字符）",
    U"间隔 C（字段内查寻的末字符）",
    U"第一个表的比较列",
    U"第二个表的比较列",
    U"排序或统计的列",
};

/// The number of a box that the test lets through.
template <typename Fits>
double fitting_number(const Program& program, int index, TextView wanted, const Fits& fits)
{
    const Text text = program.form3.Text1[index].text();
    if (const auto value = number(text); value && fits(*value)) return *value;
    throw Failure(U" 请注意：\r\n参数窗口中“" + Text(meanings.at(static_cast<std::size_t>(index))) + U"”框的数值“" +
                  text + U"”不正确，应为" + wanted + U"。");
}

bool is_column(double value)
{
    return std::floor(value) == value && value >= 0 && value <= static_cast<double>(Table::last_column);
}

} // namespace

std::size_t box_column(const Program& program, int index)
{
    return static_cast<std::size_t>(fitting_number(program, index, U" 0 到 180 的整数", is_column));
}

double box_number(const Program& program, int index)
{
    return fitting_number(program, index, U"数值", [](double) { return true; });
}

double box_position(const Program& program, int index, double least)
{
    return fitting_number(program, index, U"不小于 " + number_text(least) + U" 的整数",
                          [least](double value) { return std::floor(value) == value && value >= least; });
}

std::size_t checked_column(int column)
{
    if (!is_column(column))
        throw Failure(U" 请注意：\r\n列值 " + number_text(column) + U" 不正确，应为 0 到 180 的整数。");
    return static_cast<std::size_t>(column);
}

void show_notes_in_pane(Program& program)
{
    if (!program.form1.showdata) return;
    Document notes = read_notes(program);
    if (!notes.empty()) program.form1.RichTextBox3.set_content(PaneText(std::move(notes)));
}

void Form3_Command1_Click(Program& program, int index)
{
    if (index == 0) {
        confirm(program);
        return;
    }
    show_boxes(program.form3, false);
    program.form3.Text2.set_visible(true);
    program.form3.Text2.set_text(read_notes(program).text().str());
}

void Form3_Resize(Program& program)
{
    Form3& form3 = program.form3;
    const double width = form3.window.width(), height = form3.window.height();
    form3.Text2.set_place({0.1 * width, 0.05 * height, 0.8 * width, 0.8 * height});
    const TextBox& notes = form3.Text2;
    const double half_button = form3.Command1[0].width() / 2;
    for (auto& [index, button] : form3.Command1) {
        button.set_top(notes.top() + notes.height() + 200);
        button.set_left(notes.left() + (index + 1) * notes.width() / 3 - half_button);
    }
}

void Form3_Close(Program& program)
{
    program.form3.window.set_visible(false);
}

} // namespace tarvik

#include "columns/boxes.h"

#include <array>
#include <cmath>

namespace tarvik {

namespace {

/// What the boxes of the parameter window mean to whoever reads its help texts.
constexpr std::array<std::u32string_view, 6> meanings{
    U"列值 A（字段内查寻的列）",
    U"列值 B（字段内查寻的首字符）",
    U"间隔 C（字段内查寻的末字符）",
    U"第一个表的比较列",
    U"第二个表的比较列",
    U"排序或统计的列",
};

[[noreturn]] void refuse(const Program& program, int index, TextView wanted)
{
    throw Failure(U" 请注意：\r\n参数窗口中“" + Text(meanings.at(static_cast<std::size_t>(index))) + U"”框的数值“" +
                  program.form3.Text1[index].text() + U"”不正确，应为" + wanted + U"。");
}

bool is_whole(double value)
{
    return std::floor(value) == value;
}

} // namespace

std::size_t box_column(const Program& program, int index)
{
    const auto value = number(program.form3.Text1[index].text());
    if (!value || !is_whole(*value) || *value < 0 || *value > static_cast<double>(Table::last_column))
        refuse(program, index, U" 0 到 180 的整数");
    return static_cast<std::size_t>(*value);
}

double box_number(const Program& program, int index)
{
    const auto value = number(program.form3.Text1[index].text());
    if (!value) refuse(program, index, U"数值");
    return *value;
}

double box_position(const Program& program, int index, double least)
{
    const auto value = number(program.form3.Text1[index].text());
    if (!value || !is_whole(*value) || *value < least)
        refuse(program, index, U"不小于 " + number_text(least) + U" 的整数");
    return *value;
}

std::size_t checked_column(int column)
{
    if (column < 0 || column > static_cast<int>(Table::last_column))
        throw Failure(U" 请注意：\r\n列值 " + number_text(column) + U" 不正确，应为 0 到 180 的整数。");
    return static_cast<std::size_t>(column);
}

} // namespace tarvik

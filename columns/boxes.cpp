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

} // namespace tarvik

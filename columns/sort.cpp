#include "columns/columns.h"

#include "columns/views.h"
#include "platform/text/code_page.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

namespace tarvik {

namespace {

/// Which positions of a text make its key, counted from 1, and the base of their weights. A last position of 0 means
/// that none do.
struct KeyRule {
    std::size_t first = 1, last = 0;
    double base = 2;
};

bool is_single_byte(char32_t character)
{
    const int code = char_code(character);
    return code >= 1 && code <= 127;
}

std::size_t positions_of_wide_text(std::size_t length)
{
    if (length < 4) return 2;
    if (length <= 6) return 4;
    return length <= 12 ? 6 : 8;
}

KeyRule rule_of(TextView text)
{
    constexpr std::size_t last_position_with_letters = 18;
    const std::size_t length = text.size();
    if (is_number(text) || is_number(mid(text, 1, 3))) return {1, length, 10};
    KeyRule rule;
    for (std::size_t i = 1; i <= length; ++i) {
        if (!is_single_byte(text[i - 1])) rule.last = positions_of_wide_text(length);
        else if (i != length) return {i, std::min(length, last_position_with_letters), 2};
    }
    return rule;
}

// Powers of ten are exact up to this one.
constexpr std::array powers_of_ten{1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,  1e8,  1e9,  1e10, 1e11,
                                   1e12, 1e13, 1e14, 1e15, 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};

double power(double base, std::size_t exponent)
{
    if (base == 2) return std::ldexp(1, static_cast<int>(exponent));
    return exponent < powers_of_ten.size() ? powers_of_ten[exponent] : std::pow(base, static_cast<double>(exponent));
}

double code_at(TextView text, std::size_t position)
{
    return position <= text.size() ? char_code(text[position - 1]) : 0;
}

/// Finds the first of the smallest keys among those that are left, in a tree of the winners of each pair.
class MinimaTree {
public:
    explicit MinimaTree(std::vector<double> keys)
        : keys_(std::move(keys)), leaves_(std::bit_ceil(keys_.size() + 1)), winners_(2 * leaves_, none)
    {
        for (std::size_t i = 0; i < keys_.size(); ++i) winners_[leaves_ + i] = static_cast<std::uint32_t>(i);
        for (std::size_t node = leaves_; node-- > 1;)
            winners_[node] = winner(winners_[2 * node], winners_[2 * node + 1]);
    }

    std::size_t first_smallest() const { return winners_[1]; }
    double key(std::size_t place) const { return keys_[place]; }
    void remove(std::size_t place)
    {
        winners_[leaves_ + place] = none;
        update(place);
    }
    void set_key(std::size_t place, double key)
    {
        keys_[place] = key;
        update(place);
    }

private:
    static constexpr std::uint32_t none = 0xffff'ffff;

    // `left` stands before `right`, so it wins where they are equal.
    std::uint32_t winner(std::uint32_t left, std::uint32_t right) const
    {
        if (left == none) return right;
        return right != none && keys_[left] > keys_[right] ? right : left;
    }
    void update(std::size_t place)
    {
        for (std::size_t node = (leaves_ + place) / 2; node >= 1; node /= 2)
            winners_[node] = winner(winners_[2 * node], winners_[2 * node + 1]);
    }

    std::vector<double> keys_;
    std::size_t leaves_;
    std::vector<std::uint32_t> winners_;
};

void sort_by_column(Module1& arrays, std::size_t column, std::size_t last_row)
{
    std::vector<double> keys;
    keys.reserve(last_row + 1);
    for (std::size_t row = 0; row <= last_row; ++row) {
        arrays.suf.prefetch(row + prefetch_ahead, column);
        keys.push_back(sunnum(arrays.suf.cell(row, column)));
    }
    for (const Swap& swap : selection_swaps(keys)) {
        arrays.suf.swap_cells(column, swap.first, swap.second);
        arrays.sufrow.swap(swap.first, swap.second);
    }
}

} // namespace

double sunnum(TextView text)
{
    const KeyRule rule = rule_of(text);
    double sum = 0;
    for (std::size_t k = rule.first; k <= rule.last; ++k) sum += power(rule.base, rule.last - k) * code_at(text, k);
    if (std::isfinite(sum)) return sum;
    // Hundreds of digits pass what a number can hold: the first of them alone then decide.
    double key = 0;
    for (std::size_t k = rule.first; k <= rule.last && std::isfinite(key); ++k)
        key = key * rule.base + code_at(text, k);
    return key;
}

std::vector<Swap> selection_swaps(const std::vector<double>& keys)
{
    std::vector<std::size_t> places;
    std::vector<double> sorted;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys[i] == 0) continue;
        places.push_back(i);
        sorted.push_back(keys[i]);
    }
    MinimaTree tree(std::move(sorted));
    std::vector<Swap> swaps;
    for (std::size_t a = 0; a < places.size(); ++a) {
        const std::size_t smallest = tree.first_smallest();
        if (smallest != a) {
            swaps.push_back({places[a], places[smallest]});
            tree.set_key(smallest, tree.key(a));
        }
        tree.remove(a);
    }
    return swaps;
}

void sort_rows(Program& program)
{
    Form1& form1 = program.form1;
    const std::size_t column = form1.comp ? 0 : box_column(program, 5);
    form1.RichTextBox3.set_text({});
    if (form1.comp) {
        tell(program, U" 温情提示：\r\n请先将comp设置为FALSE（按键e），然后进行单表之内的排序或统计。",
             U"Tarvik  计算查寻 ", Icon::Information);
        return;
    }
    ScratchFile file(program, U"between2.txt");
    tell(program, U" 温情提示：\r\n参与排序或者统计的suF表的列次为:" + number_text(column) + U"。", U"Tarvik 计算");
    const auto count = static_cast<std::size_t>(form1.sufcount);
    const RowTexts& rows = program.module1.sufrow;
    std::size_t filled = 0;
    for (std::size_t row = 0; row < count; ++row) filled += rows.is_empty(row) ? 0 : 1;
    sort_by_column(program.module1, column, filled);
    const auto view = std::make_shared<RowView>(rows.buffers());
    for (std::size_t row = 0; row <= count; ++row)
        if (!rows.is_empty(row)) view->add_row(rows.line(row));
    show_view(program, file, view);
    form1.number_box().set_text(number_text(filled));
}

} // namespace tarvik

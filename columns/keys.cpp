#include "columns/columns.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr char32_t esc = 27;

void select_sug(Program& program)
{
    Form1& form1 = program.form1;
    const std::size_t column = box_column(program, 3);
    form1.comp = true;
    form1.sufcol = static_cast<int>(column);
    form1.sugcol_set = true;
    tell(program,
         U" 温情提示：\r\n参与比较的suF表的列次为:" + number_text(form1.sufcol) + U"，\r\n参与比较的suG表的列次为:" +
             program.form3.Text1[4].text() + U"。",
         U"Tarvik 计算");
}

/// A key that sets a flag and says so.
struct FlagKey {
    bool Form1::*flag;
    bool value;
    std::u32string_view text, title;
};

constexpr FlagKey outside{&Form1::notcap, true, U" 温情提示：\r\n将要显示的是2个表中 ”不∩“的记录行。", U"Tarvik 计算 "};
constexpr FlagKey inside{&Form1::notcap, false, U" 温情提示：\r\n将要显示的是2个表中” ∩ “的记录行。",
                         U"Tarvik  计算查寻  "};
constexpr FlagKey single{&Form1::comp, false, U" 温情提示：\r\n只在当前表中比较或排序。", U"Tarvik 计算"};
constexpr FlagKey shown{&Form1::showdata, true, U" 温情提示：\r\n将 要 显示还原后的数据数组。", U"Tarvik 计算 "};
constexpr FlagKey hidden{&Form1::showdata, false, U" 温情提示：\r\n将 不 显示还原后的数据数组。", U"Tarvik 计算 "};

template <const FlagKey& key>
void set_flag(Program& program)
{
    program.form1.*key.flag = key.value;
    tell(program, key.text, key.title);
}

struct Key {
    char32_t character;
    bool eaten;
    bool after_query; ///< an ordinary character until a column query has run
    void (*work)(Program& program);
};

constexpr Key keys[] = {
    {esc, false, false, column_query},       {U'c', true, true, select_sug},
    {U'?', false, true, show_notes_in_pane}, {U';', true, true, set_flag<outside>},
    {U':', true, true, set_flag<inside>},    {U'e', true, true, set_flag<single>},
    {U',', true, true, set_flag<shown>},     {U'.', true, true, set_flag<hidden>},
    {U'q', true, true, devision1},           {U'z', false, true, sort_rows},
    {U'p', false, true, comparison_key},     {U'/', false, true, column_statistics},
};

/// The keys that the third buttons of the frames spell, by their index.
constexpr std::u32string_view third_keys = U"pz/c;pp";

} // namespace

bool column_keys(Program& program, char32_t key, bool& eaten)
{
    const auto* const found = std::ranges::find(keys, key, &Key::character);
    if (found == std::end(keys) || (found->after_query && !program.form1.dbresult)) return false;
    eaten = found->eaten;
    found->work(program);
    return true;
}

void Command7_Click(Program& program, int)
{
    column_query(program);
}

void Command8_Click(Program& program, int)
{
    devision1(program);
}

void Command9_Click(Program& program, int index)
{
    const char32_t key = third_keys.at(static_cast<std::size_t>(index));
    std::ranges::find(keys, key, &Key::character)->work(program);
}

} // namespace tarvik

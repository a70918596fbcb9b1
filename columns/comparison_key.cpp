#include "columns/columns.h"

#include "columns/views.h"

#include <algorithm>

namespace tarvik {

namespace {

constexpr int no = static_cast<int>(Answer::No);

Answer ask_which_rows(Program& program)
{
    const Form1& form1 = program.form1;
    constexpr std::u32string_view choice = U"请选择：是，代表输出相等的记录，否，代表输出不相等的记录。";
    if (form1.sufrows == form1.sugrows)
        return ask(program,
                   U" 提示：\r\n  SUF表中的第" + number_text(form1.sufcol) + U"列与SUG表的第" +
                       program.form3.Text1[4].text() + U"列中字段一一对应比较 。 \r\n" + choice,
                   U"  Tarvik 计算", Buttons::YesNo);
    return ask(program,
               U" 请注意：\r\n   SUF表的行数:" + number_text(form1.sufrows) + U"   与SUG表的行数：" +
                   number_text(form1.sugrows) + U" 不相等，因此有效查寻行数只有 :" +
                   number_text(std::min(form1.sufrows, form1.sugrows)) + U"\r\n" + choice,
               U"  Tarvik 计算 ", Buttons::YesNo);
}

/// The scratch files of the key p are cleared together, before each writes its own.
void clear_files(Program& program)
{
    for (const std::u32string_view name :
         {U"between.txt", U"between1.txt", U"between3.txt", U"between5.txt", U"betweenping.txt", U"betweenping1.txt"})
        const ScratchFile cleared(program, name);
}

/// Empties both tables up to row `sugrows`, columns 0 to 100, and clears the scratch files again.
void reset_tables(Program& program)
{
    Module1& arrays = program.module1;
    const auto last = static_cast<std::size_t>(program.form1.sugrows);
    arrays.sufrow.clear(0, last);
    arrays.sugrow.clear(0, last);
    arrays.sug.clear(0, last, 0, 100);
    arrays.suf.clear(0, last, 0, 100);
    clear_files(program);
}

/// The rule before any work on two tables: with fewer rows in SUF than in SUG it says so, sets `comp` False, empties
/// the tables and gives True.
bool refuse_shorter_suf(Program& program)
{
    Form1& form1 = program.form1;
    if (form1.sufrows >= form1.sugrows) return false;
    tell(program,
         U" 请注意：\r\n    第1个表-SUF表的行数为: " + number_text(form1.sufrows) + U"   小于第2个表-SUG表的行数：" +
             number_text(form1.sugrows) +
             U"\r\n当且仅当SUF表的行数大于等于SUG表的行数时，查寻才有效。\r\n左键单击窗体后（恢复默认设置），请重新查寻"
             U"。",
         U"  Tarvik 计算");
    form1.comp = false;
    reset_tables(program);
    return true;
}

/// Row by row: shows the rows with equal or with different values, as the user chooses. With `notcap` True it refuses,
/// sets `notcap` and `comp` False and empties the tables.
void parallel_comparison(Program& program)
{
    Form1& form1 = program.form1;
    const Module1& arrays = program.module1;
    if (form1.notcap) {
        form1.notcap = false;
        form1.comp = false;
        tell(program, U" 请注意：\r\n 平行对应的比较操作步骤出现错误，请左键单击窗体后（恢复默认设置），重试！ ",
             U"  Tarvik 计算");
        reset_tables(program);
        return;
    }
    const auto suf_column = static_cast<std::size_t>(form1.sufcol);
    const std::size_t sug_column = box_column(program, 4);
    const bool equal = ask_which_rows(program) == Answer::Yes;
    const Text sign = equal ? U"＝\t" : U"≠\t";
    const auto view = std::make_shared<RowView>(arrays.sufrow.buffers());
    view->keep(arrays.sug.buffers());
    const auto last = static_cast<std::size_t>(std::min(form1.sufcount, form1.sugcount));
    for (std::size_t row = 0; row <= last; ++row) {
        const TextView suf = arrays.suf.cell(row, suf_column), sug = arrays.sug.cell(row, sug_column);
        if (suf.empty() || sug.empty() || (suf == sug) != equal) continue;
        view->add_before_row(sug, sign, arrays.sufrow.line(row));
    }
    form1.compcount = static_cast<std::int64_t>(view->line_count());
    form1.number_box().set_text(number_text(form1.compcount));
    ScratchFile file(program, equal ? U"betweenping.txt" : U"betweenping1.txt");
    show_view(program, file, view);
}

/// The piece of a field that the boxes bound; both bounds count from 1 and belong to it.
TextView bounded_piece(Program& program, TextView field)
{
    Form1& form1 = program.form1;
    form1.fieldfrom = box_position(program, 1, 1);
    form1.fieldto = box_number(program, 2);
    if (form1.fieldto < form1.fieldfrom || form1.fieldfrom > static_cast<double>(field.size())) return {};
    const double length = std::min(form1.fieldto - form1.fieldfrom + 1, static_cast<double>(field.size()));
    return mid(field, static_cast<std::size_t>(form1.fieldfrom), static_cast<std::size_t>(length));
}

/// Shows the rows whose field in column Text1(0) holds the text of the query box, each with the piece of the field that
/// Text1(1) and Text1(2) bound. An empty text is found nowhere. The bounds are read when a row is found; a box that
/// holds none throws Failure.
void field_query(Program& program)
{
    Form1& form1 = program.form1;
    const Text needle = lower(ltrim(form1.query_box().text()));
    const std::size_t column = box_column(program, 0);
    tell(program, U" 温情提示：\r\n参与字段内查寻的suF表的列次为:" + number_text(column) + U"。", U"Tarvik  计算查寻 ");
    const Module1& arrays = program.module1;
    const auto view = std::make_shared<RowView>(arrays.sufrow.buffers());
    view->keep(arrays.suf.buffers());
    const auto last = static_cast<std::size_t>(form1.curcount);
    for (std::size_t row = 0; row <= last; ++row) {
        const TextView field = ltrim(arrays.suf.cell(row, column)); // in small letters, as every cell
        if (instr(field, needle) == 0) continue;
        view->add_row(arrays.sufrow.line(row), U"\t", bounded_piece(program, field));
    }
    ScratchFile file(program, U"between5.txt");
    show_view(program, file, view);
    form1.number_box().set_text(number_text(view->line_count()));
}

void inside_suf(Program& program)
{
    // This answer is no `answer`.
    const Answer which =
        program.platform.dialogs.message({U"温情提示：\r\n是进行单表之间时间字段比较还是进行单表字段内的查寻？ \r\n"
                                          U"是，表示比较时间字段，否，表示字段内的查寻。\r\n",
                                          U"Tarvik  计算查寻 ", Buttons::YesNo, Icon::None});
    if (which == Answer::Yes) date_check(program);
    else field_query(program);
}

/// Gives false when the key ends here.
bool between_tables(Program& program)
{
    tell(program,
         U" 温情提示：目前，comp为true!\r\n如果要进行单表之内的时间字段的比较，请先将comp设置为FALSE（按键e）。\r\n"
         U"接下来的是:suf与sug之间的比较！",
         U"Tarvik 计算 ", Icon::Information);
    if (refuse_shorter_suf(program)) return false;
    const Answer which =
        ask(program,
            U" 提示：\r\n请选择：是，表示２个表的各一列相互交叉比较，否，表示２个表的各一列的平行对应比较。\r\n"
            U"列值可以在弹出的对话框中更改。具体内容请单击“说明”按钮。",
            U"Tarvik 计算", Buttons::YesNo);
    if (which == Answer::Yes) cross_comparison(program);
    return true;
}

void compare(Program& program)
{
    Form1& form1 = program.form1;
    form1.RichTextBox3.set_text({});
    clear_files(program);
    form1.compcount = 0;
    if (form1.comp) {
        if (!between_tables(program)) return;
    } else {
        inside_suf(program);
    }
    if (form1.answer == no) parallel_comparison(program);
}

} // namespace

void comparison_key(Program& program)
{
    Form1& form1 = program.form1;
    const PaneText shown = form1.RichTextBox3.content();
    const std::int64_t count = form1.compcount;
    try {
        compare(program);
    } catch (...) {
        form1.RichTextBox3.set_content(shown);
        form1.compcount = count;
        throw;
    }
}

} // namespace tarvik

#include "columns/comparisons.h"

namespace tarvik {

namespace {

constexpr int no = static_cast<int>(Answer::No);

void inside_suf(Program& program, ComparisonFiles& files)
{
    // This answer is no `answer`.
    const Answer which =
        program.platform.dialogs.message({U"温情提示：\r\n是进行单表之间时间字段比较还是进行单表字段内的查寻？ \r\n"
                                          U"是，表示比较时间字段，否，表示字段内的查寻。\r\n",
                                          U"Tarvik  计算查寻 ", Buttons::YesNo, Icon::None});
    if (which == Answer::Yes) date_check(program, files);
    else field_query(program, files);
}

/// Gives false when the key ends here.
bool between_tables(Program& program, ComparisonFiles& files)
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
    if (which == Answer::Yes) cross_comparison(program, files);
    return true;
}

void compare(Program& program)
{
    Form1& form1 = program.form1;
    form1.RichTextBox3.set_text({});
    ComparisonFiles files(program);
    form1.compcount = 0;
    if (form1.comp) {
        if (!between_tables(program, files)) return;
    } else {
        inside_suf(program, files);
    }
    if (form1.answer == no) parallel_comparison(program, files);
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

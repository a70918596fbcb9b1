#include "desktop/windows/shortcuts.h"

#include <QShortcut>

namespace tarvik {

namespace {

struct ManualPage {
    const char32_t* query; // what it begins with
    const char* heading;
};
constexpr const char* other_dockets = "其他维修单据";
constexpr ManualPage manual_pages[] = {
    {U"An order", "送修单"},
    {U"An prices", "送修单"},
    {U"An kqtest", "考勤"},
    {U"An label", "标签清单"},
    {U"An statistic", "标签清单"},
    {U"An appear", "设计器"},
    {U"An testsesame", "设计器"},
    {U"An tomation", "设计器"},
    {U"An Sesame", "设计器"},
    {U"An Excelfile", "设计器"},
    {U"An keptfile", "设计器"},
    {U"An testdocket", other_dockets},
    {U"An bendocket", other_dockets},
    {U"An dandocket", other_dockets},
    {U"An wodben", other_dockets},
    {U"An dockword", other_dockets},
    {U"An", "批量出单"},
};
const QString designer_heading = "设计器";

} // namespace

QString manual_heading(const Program& program)
{
    const Form1& form1 = program.form1;
    for (const ManualPage& page : manual_pages)
        if (form1.query_box().text().starts_with(page.query)) return page.heading;
    if (program.module1.designeropen) return designer_heading;
    if (form1.dbresult || program.module1.analysismode) return "数据列";
    return "阅读与查寻";
}

void add_shortcuts(Program& program, Form1Window& form1, Form3Window& form3, QWidget& form4, ManualWindow& manual)
{
    const auto add = [](QWidget& window, const char* keys, std::function<void()> action) {
        auto* shortcut = new QShortcut(QKeySequence(keys), &window);
        QObject::connect(shortcut, &QShortcut::activated, &window, std::move(action));
    };
    const struct {
        const char* keys;
        const Control& button;
    } buttons[] = {
        {"Ctrl+O", program.form1.Command1[0]},    {"Ctrl+S", program.form1.Command1[4]},
        {"Ctrl+PgUp", program.form1.Command2[0]}, {"Ctrl+PgDown", program.form1.Command2[1]},
        {"Alt+Right", program.form1.Command1[2]}, {"Alt+Left", program.form1.Command1[3]},
    };
    for (const auto& row : buttons) add(form1, row.keys, [&form1, &button = row.button] { form1.press(button); });
    add(form1, "F4", [&form1] { form1.switch_typing(); });
    add(form1, "F6", [&form1] { form1.switch_focus(); });
    add(form1, "F8", [&form3] { form3.take_focus(); });
    add(form1, "Ctrl+F", [&form1] { form1.open_find_bar(); });
    add(form1, "F3", [&form1] { form1.find(true); });
    add(form1, "Shift+F3", [&form1] { form1.find(false); });
    for (const char* keys : {"Ctrl++", "Ctrl+="}) add(form1, keys, [&form1] { form1.zoom_panes(1); });
    add(form1, "Ctrl+-", [&form1] { form1.zoom_panes(-1); });
    add(form1, "Ctrl+0", [&form1] { form1.zoom_panes(0); });
    const auto back = [&form1] {
        form1.activateWindow();
        form1.query_box().setFocus(Qt::ShortcutFocusReason);
    };
    for (const char* keys : {"F6", "F8"}) add(form3, keys, back);
    add(form4, "F6", back);
    for (QWidget* window : std::initializer_list<QWidget*>{&form1, &form3})
        add(*window, "F1", [&program, &manual] { manual.open_at(manual_heading(program)); });
    add(form4, "F1", [&manual] { manual.open_at(designer_heading); });
}

} // namespace tarvik

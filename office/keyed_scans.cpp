#include "office/keyed_scans.h"

#include "columns/column_query.h"

namespace tarvik {

namespace {

void load_report(Program& program, TextView path)
{
    Form1& form1 = program.form1;
    form1.fso = true;
    Document document = program.documents.load(program.platform.files, path);
    form1.textstream = true;
    if (document.empty()) tell(program, U"打开文件失败！");
    else form1.RichTextBox2.set_content(PaneText(std::move(document)));
}

int scan_report(Program& program, TextView key, TextView name)
{
    program.form1.RichTextBox3.set_text(U"\r\n");
    load_report(program, installed(program, name));
    return static_cast<int>(query1(program, key));
}

} // namespace

int query2(Program& program, TextView key, bool all_devices)
{
    return scan_report(program, key, all_devices ? U"3139.txt" : U"3138.txt");
}

int query3(Program& program, TextView key, bool return_orders)
{
    return scan_report(program, key, return_orders ? U"3137.txt" : U"保留.txt");
}

} // namespace tarvik

#include "runs/keyed_scans.h"

#include "columns/columns.h"
#include "mainwindow/installation_files.h"

namespace tarvik {

int checked_scan(Program& program, TextView key)
{
    const ScanResult scan = query1(program, key);
    if (scan.outcome == ScanOutcome::TooMany)
        throw Failure(U" 请注意：\r\n关键字“" + key + U"”的记录超过300000条，运行已经停止；请缩小源数据报表后重试。");
    return scan.rows;
}

void take_key_rows(Program& program)
{
    devision1(program);
    program.form1.rowcount = program.form1.partcount;
}

int query2(Program& program, TextView key, bool all_devices)
{
    return query7(program, key, installed(program, all_devices ? files::report_3139 : files::report_3138));
}

int query3(Program& program, TextView key, bool return_orders)
{
    return query7(program, key, installed(program, return_orders ? files::report_3137 : files::report_kept));
}

int query5(Program& program, TextView key, bool in_report)
{
    return query7(program, key, in_report ? installed(program, files::report_3158) : Text());
}

int query7(Program& program, TextView key, TextView path)
{
    Form1& form1 = program.form1;
    form1.RichTextBox3.set_text(U"\r\n");
    if (path.empty()) return checked_scan(program, key);
    Document document = load_document(program, path);
    if (document.empty()) {
        tell(program, U"打开文件失败！");
    } else {
        document.note_keyed_scan();
        form1.RichTextBox2.set_content(PaneText(std::move(document)));
    }
    return checked_scan(program, key);
}

} // namespace tarvik

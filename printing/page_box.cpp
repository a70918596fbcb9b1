#include "printing/page_box.h"

#include "mainwindow/installation_files.h"
#include "platform/text/code_page.h"
#include "runs/folder_walk.h"
#include "runs/sheets.h"

namespace tarvik {

namespace {

constexpr std::u32string_view line_tail = U"\t\r\n";
constexpr std::size_t shortest_search = 3;

/// A report that cannot be written keeps nothing from being printed: the user is informed of each reason once.
void note_folder(Program& program)
{
    Form1& form1 = program.form1;
    const Text folder = form1.scanfolderset ? form1.scanfolder : Text();
    Text reason;
    try {
        Files& files = program.platform.files;
        const Text report = installed(program, files::report_3139);
        const ForeignText present = files.file_exists(report) ? recognise_foreign(files.read(report)) : ForeignText{};
        files.append(report, encode_behind(present, folder + U"\r\n"));
    } catch (const Failure& failure) {
        reason = failure.message();
    }
    if (!reason.empty() && reason != program.note_failure) tell(program, reason);
    program.note_failure = reason;
    form1.RichTextBox3.append(folder + Text(line_tail));
}

void lock_folder(Program& program)
{
    Form1& form1 = program.form1;
    if (!program.platform.files.folder_exists(files::printed_output))
        program.platform.files.create_folder(files::printed_output);
    const auto picked = pick_file(program, any_file_filter);
    if (!picked) return;
    form1.scanfolder = picked->folder;
    if (form1.scanfolder.size() > 1) form1.scanfolder.pop_back(); // a root keeps its separator
    form1.scanfolderset = true;
    tell(program, U"打印文件所在目录锁定为:     " + form1.scanfolder + U"/" + picked->name);
}

void print_matching(Program& program, const Text& search)
{
    Form1& form1 = program.form1;
    const bool stay = is_same_folder(program.platform.files, form1.scanfolder, files::printed_output);
    std::vector<Text> names = walked_names(program, form1.scanfolder);
    std::erase_if(names, [&](const Text& name) { return lower(name).find(search) == Text::npos; });
    double printed = 0;
    work_through(program, names, [&](const Text& name) {
        const Text path = form1.scanfolder + U"/" + name;
        form1.RichTextBox3.append(name + Text(line_tail));
        SpreadsheetTask task(program, path);
        task.sheet().print_out();
        task.finish(Changes::Save);
        if (!stay) move_into_folder(program, path, Text(files::printed_output), name);
        ++printed;
    });
    program.notice =
        names.empty() ? U"没有名称含有“" + search + U"”的文件" : U"打印了 " + number_text(printed) + U" 个文件";
    if (printed > 0 && !stay) program.notice += U"，移到了 " + Text(files::printed_output);
}

} // namespace

void print_by_name(Program& program)
{
    Form1& form1 = program.form1;
    bring_up(form1, form1.RichTextBox3);
    TextBox& box = form1.page_box();
    if (!box.text().empty()) {
        note_folder(program);
        if (!form1.scanfolderset) {
            lock_folder(program);
            return;
        }
    }
    if (!form1.scanfolderset) return;
    if (box.text().size() >= shortest_search) print_matching(program, box.text());
    box.set_text({});
}

} // namespace tarvik

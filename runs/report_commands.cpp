#include "runs/report_commands.h"

#include "columns/columns.h"
#include "designer/design/design.h"
#include "mainwindow/installation_files.h"

namespace tarvik {

namespace {

bool box_holds(const Program& program, TextView text)
{
    return TextView(program.form1.query_box().text()).contains(text);
}

template <typename Command>
const Command* find_command(const Program& program, std::span<const Command> commands)
{
    for (const Command& command : commands)
        if (box_holds(program, command.text)) return &command;
    return nullptr;
}

Text replaced(Text text, std::u32string_view mark, const Text& value)
{
    for (std::size_t place = text.find(mark); place != Text::npos; place = text.find(mark, place + value.size()))
        text.replace(place, mark.size(), value);
    return text;
}

Text filled(const Program& program, const ReportCommand& command, std::u32string_view text)
{
    return replaced(replaced(Text(text), report_mark, Text(command.report)), folder_mark,
                    program.platform.files.installation_folder());
}

void ask_output_folder(Program& program)
{
    Text folder = program.platform.dialogs.input(
        U"Query of the tarvik", U"请输入An化文件的存储 路径(默认为：d:\\Atarvik output\\)：", files::default_output);
    if (folder.empty()) folder = files::default_output;
    if (folder.back() != U'\\') folder += U'\\';
    program.form1.outfolder = folder;
}

bool agreed(Program& program, const ReportCommand& command)
{
    if (!command.notice.empty()) tell(program, filled(program, command, command.notice));
    if (command.question.empty()) return true;
    const Text question = filled(program, command, Text(command.question) + Text(command.question_tail));
    return ask(program, question, application_title, Buttons::OKCancel) == Answer::OK;
}

bool design_loaded(Program& program, const ReportCommand& command)
{
    if (command.design.empty() || load_design(program, command.design)) return true;
    tell(program, installed(program, command.design) + U"不存在！请退出。");
    return false;
}

bool template_stands(Program& program, const ReportCommand& command)
{
    if (command.template_file.empty() || program.platform.files.file_exists(installed(program, command.template_file)))
        return true;
    tell(program, installed(program, command.template_file) +
                      U"文件不存在，请先将需要设计的EXCEL 样本文件复制到安装目录下，并更名为" +
                      Text(command.template_file));
    return false;
}

Text scan_key(const Program& program, const ReportCommand& command)
{
    if (!command.key.empty()) return Text(command.key);
    const Text& typed = program.form4.Text3.text();
    return command.lowers_design_key ? lower(typed) : typed;
}

bool make_table(Program& program, const ReportCommand& command)
{
    const ScanResult scan = query1(program, scan_key(program, command));
    if (scan.outcome == ScanOutcome::TooMany) check_scan(program, scan.outcome);
    if (command.count_goes_to) program.form1.*command.count_goes_to = scan.rows;
    devision1(program);
    if (command.key_column != no_column)
        statistitt(program, command.key_column == design_column ? design_key_column(program) : command.key_column);
    if (!command.sheets.sheet || program.form1.keycount > 0)
        check_scan(program, scan.outcome); // a run without keys just ends
    return template_stands(program, command);
}

// Gives whether the report began.
bool begin_report(Program& program, const ReportCommand& command)
{
    if (command.title_first) set_job_title(program);
    if (!make_table(program, command)) return false;
    if (command.sheets.sheet) start_run(program, program.form1.*command.sheets.timer);
    program.run.template_file = command.template_file;
    if (command.run) command.run(program);
    return true;
}

void run_report(Program& program, const ReportCommand& command)
{
    if (command.prepare) command.prepare(program);
    if (!agreed(program, command) || !design_loaded(program, command)) return;
    begin_record(program);
    try {
        if (!begin_report(program, command)) program.run.stopped = true;
    } catch (...) {
        program.run.stopped = true;
        throw;
    }
}

} // namespace

void check_scan(const Program& program, ScanOutcome outcome)
{
    if (outcome == ScanOutcome::TooMany)
        throw Failure(U" 请注意：\r\n符合条件的记录超过300000条，报表没有开始；请缩小源数据报表后重试。");
    if (outcome == ScanOutcome::Refused)
        throw Failure(U" 请注意：\r\n选中了查寻选项，数据列查寻没有进行，报表没有开始；请先点击窗口空白处还原默认。");
    if (program.form1.comp)
        throw Failure(U" 请注意：\r\n目前comp为TRUE，查寻结果在SUG表中，报表没有开始；请先按键e，再重新输入命令。");
}

bool run_command(Program& program, const CommandTable& commands)
{
    const bool running = run_in_progress(program.form1);
    // With a run on the next command is refused ahead of any question; other text goes on to the text query.
    const auto refuse = [&] { tell(program, U" 请注意：\r\n目前还有报表正在自动化处理，请等待处理完毕后再试。"); };
    if (const auto* immediate = find_command(program, commands.immediate)) {
        if (running && !immediate->during_runs) refuse();
        else immediate->run(program);
        return true;
    }
    if (!box_holds(program, U"An")) return false;
    if (running) {
        const bool is_command = find_command(program, commands.reports) != nullptr;
        if (is_command) refuse();
        return is_command;
    }
    ask_output_folder(program);
    // The box is read anew: it may have been edited while the question stood.
    const auto* report = find_command(program, commands.reports);
    try {
        Files& files = program.platform.files;
        const Text& folder = program.form1.outfolder;
        if (!files.folder_exists(folder)) files.create_folder(folder);
    } catch (const Failure&) {
        if (!report) return false; // the folder was wanted for a command alone
        throw;
    }
    if (!report) return false;
    run_report(program, *report);
    return true;
}

} // namespace tarvik

#include "office/report_commands.h"

#include "columns/column_query.h"
#include "columns/statistics.h"
#include "columns/table.h"
#include "office/batch_runner.h"

namespace tarvik {

namespace {

constexpr std::u32string_view default_folder = U"d:\\Atarvik output\\";

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

void ask_output_folder(Program& program)
{
    Text folder = program.platform.dialogs.input(
        U"Query of the tarvik", U"请输入An化文件的存储 路径(默认为：d:\\Atarvik output\\)：", default_folder);
    if (folder.empty()) folder = default_folder;
    if (folder.back() != U'\\') folder += U'\\';
    program.form1.outfolder = folder;
    program.form1.fso = true;
    if (!program.platform.files.folder_exists(folder)) program.platform.files.create_folder(folder);
}

bool confirmed(Program& program, const ReportCommand& command)
{
    const Text question = U"欢迎使用excel自动化报表，首先请确认是否已经打开源数据报表.txt文件，并将其更名为" +
                          Text(command.confirmed_report) + U".txt，并保存在此安装目录下" +
                          program.platform.files.installation_folder() + Text(command.confirmation_tail);
    return ask(program, question, application_title, Buttons::OKCancel) == Answer::OK;
}

void run_report(Program& program, const ReportCommand& command)
{
    if (!confirmed(program, command)) return;
    query1(program, command.key);
    devision1(program);
    statistitt(program, command.key_column);
    start_run(program, program.form1.*command.timer);
}

} // namespace

bool run_command(Program& program, const CommandTable& commands)
{
    if (const auto* immediate = find_command(program, commands.immediate)) {
        immediate->run(program);
        return true;
    }
    if (!box_holds(program, U"An")) return false;
    if (find_command(program, commands.reports) && run_in_progress(program.form1)) {
        tell(program, U" 请注意：\r\n目前还有报表正在自动化处理，请等待处理完毕后再试。");
        return true;
    }
    ask_output_folder(program);
    // The box is read anew: it may have been edited while the question stood.
    const auto* report = find_command(program, commands.reports);
    if (!report) return false;
    run_report(program, *report);
    return true;
}

} // namespace tarvik

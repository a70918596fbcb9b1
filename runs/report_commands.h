#pragma once

#include "columns/columns.h"
#include "runs/batch_runner.h"

#include <span>

/// The report commands of the query box: recognition, questions, the scan, the list of keys, the start of the run.
namespace tarvik {

/// A command that runs at once, ahead of the question for the output folder.
struct ImmediateCommand {
    std::u32string_view text;
    void (*run)(Program& program);
    bool during_runs = true; ///< it leaves alone what a run works on
};

// Texts of a command may hold marks.
inline constexpr std::u32string_view folder_mark = U"{folder}"; ///< the installation folder
inline constexpr std::u32string_view report_mark = U"{report}"; ///< the command's report
inline constexpr std::u32string_view excel_question =
    U"欢迎使用excel自动化报表，首先请确认是否已经打开源数据报表.txt文件，并将其更名为{report}.txt，"
    U"并保存在此安装目录下{folder}";
inline constexpr std::u32string_view word_question =
    U"欢迎使用word自动化报表，首先请确认是否已经打开源数据报表.txt文件，并将其更名为{report}.txt，"
    U"并保存在此安装目录下{folder}";

// Where a command's key column stands, if it is not a fixed one.
inline constexpr int no_column = 0;      ///< the command makes no list of keys
inline constexpr int design_column = -1; ///< in the designer's box Text4

/// A command that asks for the output folder and scans the open document. The members stand in the order in which they
/// are used; what most commands lack has a default.
struct ReportCommand {
    std::u32string_view text;                    ///< found anywhere in the query box, case kept
    void (*prepare)(Program& program) = nullptr; ///< what is put right before anything is asked
    std::u32string_view notice = {};             ///< a box with OK alone
    std::u32string_view question = {};           ///< Cancel ends the command
    std::u32string_view report = {};             ///< the number that the question names
    std::u32string_view question_tail = {};      ///< what the question adds
    std::u32string_view design = {};             ///< parameter file that is loaded into the designer's boxes
    bool title_first = false;                    ///< the caption is set, and jobstart taken, ahead of the scan
    std::u32string_view key = {};                ///< picks the lines; empty: the designer's query text
    bool lowers_design_key = false;              ///< the designer's query text is taken in lower case
    int Form1::*count_goes_to = nullptr;         ///< member that takes the number of lines
    int key_column = no_column;                  ///< whose distinct values are the keys of the run
    std::u32string_view template_file = {};      ///< must lie in the installation folder
    SheetFamily sheets = {};                     ///< of the run that is started, if the family has sheets
    void (*run)(Program& program) = nullptr;     ///< the operation of a command that starts no run
};

/// Both lists are tested from the top: the first text that the query box holds decides.
struct CommandTable {
    std::span<const ImmediateCommand> immediate;
    std::span<const ReportCommand> reports;
};

/// Throws Failure, with what to do about it, for a scan after which the table holds rows of an earlier one.
void check_scan(const Program& program, ScanOutcome outcome);

/// Enter in the query box. False when no command was found: the key then goes on to the text query. A text that holds
/// "An" asks for the output folder first, unless a run is on. Throws Failure when the output folder of a command cannot
/// be made, and when the scan gave nothing that a run could work on.
bool run_command(Program& program, const CommandTable& commands);

} // namespace tarvik

#pragma once

#include "runs/report_commands.h"

/// The report designer: its window with the preview, and the commands that work by a design or on a folder of files.
namespace tarvik {

// The window

/// "保存参数": asks first whether to save at all, which also shows or hides the help texts, then into which of the
/// three parameter files. A box left empty is stored as "0" and named; an asterisk is stored as it is, though it ends
/// its field when the file is read. Throws Failure when the file cannot be written.
void Form4_Command1_Click(Program& program);
/// "参数校验": loads one of the three parameter files into the boxes. Throws Failure when it cannot be read.
void Form4_Command2_Click(Program& program);
/// The window is closed: when it is used next its boxes hold the texts of the design, and the help texts show.
void Form4_Unload(Program& program);

// The preview: what the design does to the first key, before any report is made

/// "预览": fills a template with the first key's rows of the open document, as the boxes stand, and shows its first
/// sheet. No file is written, and neither tables nor panes change. Throws Failure when the template or the key column
/// is of no use.
void Form4_Command3_Click(Program& program);
/// A click on a cell of the preview: its row and column go into the pair of boxes whose row had the focus last.
void Form4_Preview_Click(Program& program);
/// Remembers the row of the design that the user is at; a box of none forgets it.
void Form4_GotFocus(Program& program, const Control& box);

// The commands

/// "An testsesame A" and "B": a copy of a template for each key, filled as the design in the designer's boxes says,
/// from the key's rows in SUF. A key has no copy when the query box holds neither command any more.
extern const ReportCommand template_command_a, template_command_b;

/// "An tomation" and "An Sesame Open": files that exist already are picked by the key in their names and filled as the
/// design says; copies of them go to the output folder. Each key takes one pass over the folder. A file
/// that fails is passed over: a pass of its own reports it at the end, a run when it is over. A cancelled choice of the
/// folder ends the pass, and the run with it.
extern const ReportCommand tomation_command, sesame_open_command;

/// "An Excelfile": the key cells of many spreadsheets are looked up in the table, and the rows that they equal fill
/// other cells of those spreadsheets. One pass over the folder: every worksheet of every file, each key cell against
/// each row of SUF. A match counts into sheetno, and each file is saved in the output folder with an "A" ahead of its
/// name. A file that fails is passed over, its matches do not count, and it is reported at the end. Says how many rows
/// have found no cell; nothing more happens when the user cancels the choice of the folder.
extern const ReportCommand excelfile_command;

/// "An keptfile": moves the files whose names hold values of a column of the open document to the output folder. The
/// column is that in Form3.Text1(5). A file goes with the first value that its name holds; a name that the output
/// folder has already gets a number. Values that found no file are listed in nofile.txt. A file that cannot be moved is
/// passed over and reported at the end. A cancelled choice of the folder ends the operation.
extern const ReportCommand keptfile_command;

} // namespace tarvik

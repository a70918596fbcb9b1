#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// Whether the command stands at the very beginning of the query box. With anything before it a run makes no new files.
bool command_leads(const Program& program, TextView command);

/// Whether the table comes from a scan and the query box still holds the command, without which no sheet is made.
bool sheet_wanted(const Program& program, TextView command);
/// The same for the key at hand of a run, which is passed over where the box holds the command no more.
bool key_gets_sheet(Program& program, TextView command);

/// The name that a sheet asks for. All of its texts may come from reports.
struct SheetName {
    Text folder_text;        ///< loses its points; names the sheet's folder below outfolder and begins its name
    std::vector<Text> parts; ///< each behind a "-"
    Text ending = {};        ///< behind the parts
    Text extension = U".xlsx";
};

/// The path of a sheet in its folder below outfolder, which is made if it is not there; without a folder text it lies
/// in outfolder itself. Nothing leads out of outfolder; the name is cut to what a file system takes, in the folder text
/// first, so that what tells sheets apart stays. Within a run, names that differ get files that differ: the second gets
/// a number.
Text sheet_path(Program& program, const SheetName& name);

/// The same for a file that lies in outfolder itself and bears one name, made of a field or of another file's name. It
/// leaves room for an extension that the saving may add.
Text plain_sheet_path(Program& program, const Text& name);

/// Moves a file into a folder: a name that the folder has already gets a number, so that nothing is replaced.
void move_into_folder(Program& program, const Text& file, const Text& folder, const Text& name);

} // namespace tarvik

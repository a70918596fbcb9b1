#pragma once

#include "mainwindow/mainwindow.h"

namespace tarvik {

/// Whether the command stands at the very beginning of the query box. With anything before it a run makes no new files.
bool command_leads(const Program& program, TextView command);

/// The folder of a sheet below outfolder, made if it is not there, with its closing separator. The folder text comes
/// from a report: it loses its points, and nothing in it leads out of outfolder.
Text sheet_folder(Program& program, TextView folder_text);

/// The name that starts every sheet's file: the folder text without points, as a file name can hold it.
Text sheet_name_head(TextView folder_text);

} // namespace tarvik

#pragma once

#include "platform/text/text.h"

#include <filesystem>
#include <string_view>

namespace tarvik {

/// The folder that the program works in: the installation folder of everything above.
struct WorkingFolder {
    std::filesystem::path path;
    Text trouble; ///< what is to be reported of it at the start; empty when all is well
};

/// The folder of a program that has its files beside it and may write there; else the user's own, "tarvik" in
/// `data_folder`, into which goes what was installed and has not been handed out before. A file that the user has is
/// never replaced, and one that the user deleted does not come back: the list .handed-out in the own folder names
/// every file with the version that brought it. Several programs may do this at once. Where the own folder cannot be
/// made, the installed files are worked with as they are; `trouble` then says so.
WorkingFolder open_working_folder(const std::filesystem::path& program_folder, const std::filesystem::path& data_folder,
                                  std::string_view version);
/// The same for the running program and the user who runs it.
WorkingFolder open_working_folder();

} // namespace tarvik

#pragma once

#include "platform/text/text.h"

#include <filesystem>

/// Where things lie on this system.
namespace tarvik {

/// What the root of a drive letter is where nobody tells another folder: the drive, or the user's home folder on a
/// system that has none.
std::filesystem::path drive_folder(char letter);
/// The system's path of one that begins with a separator.
std::filesystem::path rooted_path(TextView path);
/// Absolute, without "." and "..".
std::filesystem::path full_path(const std::filesystem::path& path);
/// The file of the program that runs; empty where the system does not tell.
std::filesystem::path program_file();
/// Where the programs of one user keep that user's own files.
std::filesystem::path user_data_folder();
bool may_write_in(const std::filesystem::path& folder) noexcept;

} // namespace tarvik

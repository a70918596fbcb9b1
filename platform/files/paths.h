#pragma once

#include "platform/text/text.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

/// Paths of this system as texts and back, where things lie, where paths lead, and names for files.
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

/// The path below `root` that `names` tell, separated by "\" or "/". A name that is not there as written is looked up
/// without regard to case in its folder, and the first fitting name in the order of the bytes is taken; what is not
/// there at all stays as written. (A system that looks names up so by itself is asked for the name as written.)
std::filesystem::path look_up(const std::filesystem::path& root, TextView names);

// Paths of the system as texts and back. What the disk holds is bytes on one system and 16-bit units on another; no
// other conversion is right on both.

Text text_of(const std::filesystem::path& path);
std::filesystem::path path_of(TextView text);

/// On a system whose names are bytes, these bytes as they are.
std::string utf8_of(const std::filesystem::path& path);
std::filesystem::path path_of_utf8(std::string_view utf8);

constexpr bool is_separator(char32_t character) noexcept
{
    return character == U'\\' || character == U'/';
}
/// The names between the separators, none of them empty.
std::vector<Text> names_of(TextView path);
/// A path divided behind its last separator.
struct PathParts {
    TextView folder; ///< with the separator; empty if there is none
    TextView name;
};
PathParts split_path(TextView path);

/// A name divided ahead of its extension: of 8 characters at most, with its point; empty if there is none.
struct NameParts {
    TextView stem, extension;
};
NameParts split_extension(TextView name);

// Names made of report fields, none of which may lead out of the folder that a file is made for.

/// A part inside of a name: characters that no file name can hold (\ / : * ? " < > |), controls and marks that turn the
/// direction of writing become "_". Everything else stays, blanks and points at the end included; an empty part stays
/// empty.
Text safe_name_part(TextView part);

/// What a character or a name takes of a file's name, in this system's measure.
std::size_t name_size(char32_t character) noexcept;
std::size_t name_size(TextView name) noexcept;
/// What one name may take that the program makes.
extern const std::size_t longest_name;
/// A name cut to `room` at most in that measure; no character is cut through.
TextView cut_to_room(TextView name, std::size_t room);

/// False for names that no file of this system can have though each of their characters is good.
bool is_usable_name(TextView name);
/// The name itself, or the nearest that a file can have.
Text usable_name(Text name);

/// A whole file or folder name, without its path: characters as in safe_name_part(), and a name that would be empty,
/// "." or ".." becomes "_". A name that takes more than `room` loses characters before its extension.
Text safe_file_name(TextView name, std::size_t room = longest_name);

} // namespace tarvik

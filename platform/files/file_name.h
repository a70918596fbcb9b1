#pragma once

#include "platform/text/text.h"

/// Names of files: the parts of a path, and names made of report fields, none of which may lead out of the folder that
/// a file is made for.
namespace tarvik {

/// A part inside of a name: characters that no file name can hold (\ / : * ? " < > |), controls and
/// marks that turn the direction of writing become "_". Everything else stays, blanks and points at the end included;
/// an empty part stays empty.
Text safe_name_part(TextView part);

/// A path divided behind its last separator, "\\" or "/".
struct PathParts {
    TextView folder; ///< with the separator; empty if there is none
    TextView name;
};
PathParts split_path(TextView path);

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
/// "." or ".." becomes "_". A name that is too long loses characters before its extension.
Text safe_file_name(TextView name);

} // namespace tarvik

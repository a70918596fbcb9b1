#pragma once

#include "platform/text/text.h"

/// What this system takes for the name of a file.
namespace tarvik {

/// What a character takes of a name, in this system's measure.
std::size_t name_size(char32_t character) noexcept;
/// What one name may take that the program makes.
extern const std::size_t longest_name;

/// False for names that no file can have though each of their characters is good.

bool is_usable_name(TextView name);
/// The name itself, or the nearest that a file can have.
Text usable_name(Text name);

} // namespace tarvik

#pragma once

#include "platform/text/text.h"

#include <filesystem>

namespace tarvik {

/// The path below `root` that `names` tell, separated by "\" or "/". A name that is not there as written is looked up
/// without regard to case in its folder, and the first fitting name in the order of the bytes is taken; what is not
/// there at all stays as written. (A system that looks names up so by itself is asked for the name as written.)
std::filesystem::path look_up(const std::filesystem::path& root, TextView names);

} // namespace tarvik

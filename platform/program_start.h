#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// For main() to call first: a closed pipe becomes a failed write, streams carry bytes. Gives the words of the command
/// line behind the program's name, in UTF-8.
std::vector<std::string> start_program(int count, char** words);

/// The program's version, e.g. "0.1".
std::string_view version() noexcept;

} // namespace tarvik

#pragma once

#include <string>
#include <vector>

namespace tarvik {

/// For main() to call first: a closed pipe becomes a failed write, streams carry bytes. Gives the words of the command
/// line behind the program's name, in UTF-8.
std::vector<std::string> start_program(int count, char** words);

} // namespace tarvik

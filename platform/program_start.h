#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// For main() to call first: a closed pipe becomes a failed write, streams carry bytes. Gives the words of the command
/// line behind the program's name, in UTF-8.
std::vector<std::string> start_program(int count, char** words);

/// Asks the system to lay a large block of memory in large pages, which it clears and finds faster. It is an advice: a
/// system that has none gives usual pages.
void prefer_large_pages(void* block, std::size_t bytes) noexcept;

/// The program's version, e.g. "0.1".
std::string_view version() noexcept;

} // namespace tarvik

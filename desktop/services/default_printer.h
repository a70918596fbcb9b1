#pragma once

#include <string>

namespace tarvik {

/// The name of the system's default printer, or nothing.
std::string default_printer();

} // namespace tarvik

#pragma once

#include <string_view>

namespace tarvik {

/// The program's version, e.g. "0.1".
std::string_view version() noexcept;

} // namespace tarvik

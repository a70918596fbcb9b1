#pragma once

#include <ctime>

namespace tarvik {

/// The computer's local time.
std::tm local_time(std::time_t time);

} // namespace tarvik

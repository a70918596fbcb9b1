#pragma once

#include "platform/text/text.h"

#include <algorithm>

namespace tarvik {

/// Rows of a sorted table lie all over their document. Asking for those that come next while one is in hand saves most
/// of the waiting.
inline constexpr std::size_t prefetch_ahead = 8;

/// Asks for the beginning of a text's storage.
inline void prefetch(TextView text)
{
    constexpr std::size_t line = 64, most = 512;
    const auto* const bytes = static_cast<const char*>(text.data());
    const std::size_t size = std::min(text.size() * text.width(), most);
    for (std::size_t place = 0; place < size; place += line) __builtin_prefetch(bytes + place);
}

} // namespace tarvik

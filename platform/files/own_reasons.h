#pragma once

#include <span>
#include <string_view>

namespace tarvik {

/// Why a call failed, in the user's words.
struct FileReason {
    int error;
    std::u32string_view words;
};

/// The reasons that only this system knows or has words of its own for.
std::span<const FileReason> own_reasons() noexcept;

} // namespace tarvik

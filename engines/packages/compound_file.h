#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik {

/// A stream or storage in the root of a compound file, the container of .xls, of .doc and of
/// packages behind a password.
struct CompoundEntry {
    std::string name; ///< "?" for characters that are not ASCII
    bool is_stream = false;
    std::string_view beginning; ///< of a stream's bytes; empty for one that is short
};

/// The entries in the root of a compound file; nothing when the bytes are cut off or damaged: when some stream's bytes,
/// at whatever depth, do not all lie in the file. `bytes` must outlive the entries.
std::optional<std::vector<CompoundEntry>> read_compound_file(std::string_view bytes);

/// Whether bytes that begin so are a compound file. Eight bytes tell.
bool is_compound_file(std::string_view beginning) noexcept;

} // namespace tarvik

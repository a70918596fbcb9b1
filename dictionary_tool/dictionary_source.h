#pragma once

#include "platform/text/text.h"

#include <filesystem>
#include <functional>

namespace tarvik {

/// A head word with what its dictionary says about it; lines end in LF or CR LF.
struct SourceEntry {
    Text head;
    Text body;
};

using EntrySink = std::function<void(const SourceEntry&)>;

/// What a dictionary says about itself, and how many of its entries point outside of its text and were left out.
struct SourceSummary {
    Text name;
    std::size_t damaged = 0;
};

/// Hands every entry of a dictionary to the sink, in the order of its index. The extension states the format: .ifo for
/// StarDict, .index for dictd; the other files of the dictionary lie beside it, plain or packed. Throws Failure.
SourceSummary read_dictionary_source(const std::filesystem::path& file, const EntrySink& sink);

} // namespace tarvik

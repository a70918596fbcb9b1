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

// The two formats
SourceSummary read_stardict(const std::filesystem::path& ifo, const EntrySink& sink);
SourceSummary read_dictd(const std::filesystem::path& index, const EntrySink& sink);

/// The bytes of the first file that exists among `base` with these extensions appended; one packed by gzip or dictzip
/// comes unpacked. Throws Failure when there is none or it cannot be read.
std::string read_unpacked(const std::filesystem::path& base, std::initializer_list<const char*> extensions);

/// Takes the text up to this character off the front, or all of it, and the character with it.
std::string_view cut_to(std::string_view& rest, char end);

} // namespace tarvik

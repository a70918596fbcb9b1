#pragma once

#include "platform/text/text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>
#include <utility>
#include <vector>

/// What a target is made of. LLVMFuzzerTestOneInput() runs one input; a wrong result or a crash is a finding.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace tarvik::fuzz {

inline std::string_view bytes_of_input(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

/// Ends the program with the words when the result is wrong.
inline void require(bool holds, const char* words)
{
    if (holds) return;
    std::fprintf(stderr, "wrong: %s\n", words);
    std::abort();
}

/// An input as a row of choices. Behind its end every choice is the first one.
class Choices {
public:
    explicit Choices(std::string_view bytes) : bytes_(bytes) {}

    bool ended() const { return bytes_.empty(); }
    std::size_t below(std::size_t limit)
    {
        std::size_t value = next();
        if (limit > 256) value = value << 8U | next();
        return value % limit;
    }

private:
    std::size_t next()
    {
        if (bytes_.empty()) return 0;
        const auto value = static_cast<unsigned char>(bytes_.front());
        bytes_.remove_prefix(1);
        return value;
    }
    std::string_view bytes_;
};

/// A text of up to `most` of these pieces.
inline Text chosen_text(Choices& choices, const std::vector<Text>& pieces, std::size_t most)
{
    Text text;
    for (std::size_t count = choices.below(most + 1); count > 0 && !choices.ended(); --count)
        text += pieces[choices.below(pieces.size())];
    return text;
}

/// Several files in one input: a line "=== name" begins each. Of a name that comes twice the first counts.
inline std::vector<std::pair<std::string, std::string>> listed_files(std::string_view listing)
{
    constexpr std::string_view mark = "=== ";
    std::vector<std::pair<std::string, std::string>> files;
    while (listing.starts_with(mark)) {
        listing.remove_prefix(mark.size());
        const auto line = listing.substr(0, listing.find('\n'));
        listing.remove_prefix(std::min(line.size() + 1, listing.size()));
        const auto end = listing.starts_with(mark) ? 0 : listing.find("\n=== ");
        const auto contents = listing.substr(0, end);
        listing.remove_prefix(end == std::string_view::npos ? listing.size() : end == 0 ? 0 : end + 1);
        bool known = line.empty() || line.find('\0') != std::string_view::npos;
        for (const auto& file : files) known = known || file.first == line;
        if (!known) files.emplace_back(line, contents);
    }
    return files;
}

} // namespace tarvik::fuzz

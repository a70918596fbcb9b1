#include "platform/text/text.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace tarvik {

std::size_t TextView::rfind(char32_t character) const noexcept
{
    return visit([character](auto text) -> std::size_t {
        for (std::size_t i = text.size(); i > 0; --i)
            if (text[i - 1] == character) return i - 1;
        return npos;
    });
}

Text TextView::str() const
{
    Text text;
    append_to(text);
    return text;
}

void TextView::append_to(Text& target) const
{
    visit([&target](auto text) {
        if constexpr (sizeof(text[0]) == sizeof(char32_t)) target.append(text.data(), text.size());
        else target.append(text.begin(), text.end());
    });
}

std::size_t TextView::hash() const noexcept
{
    // Four characters at a time with independent products, so that rows hash at memory speed; the products see the
    // characters and not their storage, so that the width leaves no trace.
    constexpr std::array<std::uint64_t, 4> odd{0x9e37'79b9'7f4a'7c15U, 0xc2b2'ae3d'27d4'eb4fU, 0x1656'67b1'9e37'79f9U,
                                               0x85eb'ca77'c2b2'ae63U};
    // Of a very long text, as a document without line ends has them for rows, both ends and the length tell enough.
    constexpr std::size_t end_hashed = 1024, longest_hashed = 4 * end_hashed;
    if (size() > longest_hashed) {
        const std::size_t ends = substr(0, end_hashed).hash() * 31 + substr(size() - end_hashed).hash();
        return ends ^ (size() * odd[0]);
    }
    return visit([&odd](auto text) {
        std::uint64_t state = text.size() * odd[0];
        const auto stir = [&state](std::uint64_t value) {
            state = (state ^ value) * 0x2545'f491'4f6c'dd1dU;
            state ^= state >> 29;
        };
        std::size_t i = 0;
        for (; i + 4 <= text.size(); i += 4)
            stir((text[i] + odd[3]) * odd[0] + (text[i + 1] + odd[0]) * odd[1] + (text[i + 2] + odd[1]) * odd[2] +
                 (text[i + 3] + odd[2]) * odd[3]);
        for (; i < text.size(); ++i) stir((text[i] + odd[3]) * odd[1]);
        return static_cast<std::size_t>(state ^ (state >> 32));
    });
}

bool operator==(TextView a, TextView b) noexcept
{
    if (a.size() != b.size()) return false;
    if (a.empty()) return true;
    if (a.width() == b.width())
        return a.data() == b.data() || std::memcmp(a.data(), b.data(), a.size() * a.width()) == 0;
    return a.visit([b](auto left) {
        return b.visit([left](auto right) { return std::equal(left.begin(), left.end(), right.begin()); });
    });
}

Text operator+(Text left, TextView right)
{
    right.append_to(left);
    return left;
}

TextView mid(TextView text, std::size_t position, std::size_t count) noexcept
{
    if (position == 0) return {};
    return text.substr(position - 1, count);
}

std::size_t instr(TextView text, TextView needle, std::size_t from)
{
    if (needle.empty()) return 0;
    // npos + 1 is 0.
    return text.find(needle, from == 0 ? 0 : from - 1) + 1;
}

TextView ltrim(TextView text) noexcept
{
    std::size_t blanks = 0;
    while (blanks < text.size() && text[blanks] == U' ') ++blanks;
    return text.substr(blanks);
}

TextView rtrim(TextView text) noexcept
{
    std::size_t size = text.size();
    while (size > 0 && text[size - 1] == U' ') --size;
    return text.substr(0, size);
}

TextView trim(TextView text) noexcept
{
    return ltrim(rtrim(text));
}

} // namespace tarvik

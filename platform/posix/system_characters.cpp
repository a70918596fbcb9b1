#include "platform/text/system_characters.h"

#include <array>
#include <bit>
#include <cstdint>
#include <cwctype>
#include <iconv.h>
#include <locale.h> // NOLINT(modernize-deprecated-headers): newlocale() is in no other
#include <span>

namespace tarvik {

namespace {

/// What the system makes of single codes.
class SystemCharacters {
public:
    SystemCharacters()
        : converter_(iconv_open(std::endian::native == std::endian::little ? "UTF-32LE" : "UTF-32BE", "GB18030"))
    {
    }
    ~SystemCharacters()
    {
        if (available()) iconv_close(converter_);
    }
    SystemCharacters(const SystemCharacters&) = delete;
    SystemCharacters& operator=(const SystemCharacters&) = delete;

    bool available() const noexcept
    {
        return converter_ != reinterpret_cast<iconv_t>(-1); // NOLINT(performance-no-int-to-ptr)
    }

    /// 0 for none.
    char32_t character(std::span<std::uint8_t> code)
    {
        std::array<char32_t, 4> result{};
        char* in = reinterpret_cast<char*>(code.data());
        char* out = reinterpret_cast<char*>(result.data());
        std::size_t in_left = code.size(), out_left = sizeof(result);
        const bool converted = iconv(converter_, &in, &in_left, &out, &out_left) != static_cast<std::size_t>(-1);
        if (!converted) iconv(converter_, nullptr, nullptr, nullptr, nullptr);
        const bool is_one = converted && in_left == 0 && out_left == sizeof(result) - sizeof(char32_t);
        return is_one ? result[0] : U'\0';
    }

private:
    iconv_t converter_;
};

std::vector<char32_t> letters(wint_t (*mapped)(wint_t, locale_t))
{
    locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    if (!locale) locale = ::newlocale(LC_CTYPE_MASK, "C", nullptr); // the letters of ASCII are better than none
    std::vector<char32_t> letters(basic_plane_size);
    for (char32_t c = 0; c < basic_plane_size; ++c) {
        const auto letter = static_cast<char32_t>(mapped(c, locale));
        letters[c] = letter < basic_plane_size ? letter : c;
    }
    ::freelocale(locale);
    return letters;
}

} // namespace

std::vector<char32_t> two_byte_characters()
{
    SystemCharacters system;
    if (!system.available()) return {};
    std::vector<char32_t> characters;
    for (unsigned lead = first_lead; lead <= last_lead; ++lead) {
        for (unsigned second = first_second; second <= last_second; ++second) {
            std::array<std::uint8_t, 2> bytes{static_cast<std::uint8_t>(lead), static_cast<std::uint8_t>(second)};
            characters.push_back(system.character(bytes));
        }
    }
    return characters;
}

std::vector<char32_t> four_byte_characters()
{
    std::vector<char32_t> characters(four_byte_places);
    SystemCharacters system;
    for (std::size_t place = 0; system.available() && place < four_byte_places; ++place) {
        auto bytes = four_byte_code(place);
        characters[place] = system.character(bytes);
    }
    return characters;
}

std::vector<char32_t> small_letters()
{
    return letters(::towlower_l);
}

std::vector<char32_t> capital_letters()
{
    return letters(::towupper_l);
}

} // namespace tarvik

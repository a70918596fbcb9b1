#include "platform/text/code_page.h"

#include <gtest/gtest.h>

#include <iconv.h>
#include <random>

/// The code page against the conversion of a system that has one.
namespace tarvik::test {
namespace {

/// The system's own conversion; nothing when it refuses the bytes.
std::optional<std::string> converted(const char* to, const char* from, std::string bytes)
{
    const iconv_t converter = iconv_open(to, from);
    std::string result(bytes.size() * 4 + 8, '\0');
    char *in = bytes.data(), *out = result.data();
    std::size_t in_left = bytes.size(), out_left = result.size();
    const bool done = iconv(converter, &in, &in_left, &out, &out_left) != static_cast<std::size_t>(-1);
    iconv_close(converter);
    if (!done) return std::nullopt;
    result.resize(result.size() - out_left);
    return result;
}

TEST(CodePage, agrees_with_the_system_on_every_two_byte_code)
{
    for (unsigned lead = 0x81; lead <= 0xfe; ++lead) {
        std::string row;
        for (unsigned second = 0x40; second <= 0xfe; ++second)
            if (second != 0x7f) row.append({static_cast<char>(lead), static_cast<char>(second)});
        const auto expected = converted("UTF-8", "GB18030", row);
        EXPECT_EQ(to_utf8(decode_own(row).text()), expected) << std::hex << lead;
        EXPECT_EQ(encode(from_utf8(expected.value())), row) << std::hex << lead;
        EXPECT_EQ(to_utf8(decode_own(std::string{static_cast<char>(lead), 0x7f}).text()), "\ufffd\x7f");
    }
}

TEST(CharCode, is_the_signed_code_that_the_system_has_in_gbk)
{
    EXPECT_EQ(char_code(U'€'), 128) << "of the code page alone";
    for (char32_t c = 0; c < 0x20000; c = c == 0xd7ff ? 0xe000 : c + 1) {
        if (c == U'€') continue;
        const auto bytes = converted("GBK", "UTF-8", to_utf8(Text(1, c)));
        const auto byte = [&](std::size_t place) { return static_cast<unsigned char>((*bytes)[place]); };
        const int expected = !bytes ? 63 : bytes->size() == 1 ? byte(0) : byte(0) * 256 + byte(1) - 65536;
        ASSERT_EQ(char_code(c), expected) << std::hex << static_cast<unsigned>(c);
    }
    for (const char32_t none : {0xd800, 0x110000}) EXPECT_EQ(char_code(none), 63);
}

TEST(CodePage, round_trips_agree_with_the_system)
{
    std::mt19937 random(2);
    for (int round = 0; round < 600; ++round) {
        // Lengths around the stretches of the loops; every third text is all in the basic plane.
        Text text(round % 5 == 0 ? 1000 + random() % 8000 : random() % 40, U' ');
        const char32_t end = round % 3 == 0 ? 0xd800 : 0x110000;
        for (char32_t& c : text) {
            const auto any = static_cast<char32_t>(random());
            c = random() % 2 == 0 ? any % 0x80 : random() % 3 == 0 ? any % end : 0x4e00 + any % 0x5000;
        }
        for (char32_t& c : text)
            if (c >= 0xd800 && c < 0xf900) c = U'中';
        std::erase(text, U'\ufffd');
        text += U'\r'; // or line feeds would be those of another system
        const std::string bytes = encode(text);
        ASSERT_EQ(converted("GB18030", "UTF-8", to_utf8(text)), bytes);
        ASSERT_EQ(decode_own(bytes).text(), text);
        ASSERT_EQ(recognise_foreign(bytes).document.text(), text);
    }
}

} // namespace
} // namespace tarvik::test

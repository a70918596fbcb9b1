#include "platform/failure.h"
#include "platform/text/code_page.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tarvik::test {
namespace {

using namespace std::string_literals;

struct FileCase {
    const char* what;
    std::string bytes;
    Text text;
    unsigned width;
};

TEST(DecodeForeign, reads_every_kind_of_file)
{
    const FileCase cases[] = {
        {"short GBK", "\xd6\xd0\xb9\xfa"s, U"中国", 2},
        {"GBK that could be two-byte UTF-8", "\xc4\xa3\xca\xbd"s, U"模式", 2},
        {"UTF-8", "a\xe4\xb8\xad\r\n"s, U"a中\r\n", 2},
        {"UTF-8 cut in its last character is none", "\xe4\xb8\xad\xe5\x9b"s, U"涓\ue15e\ufffd", 2},
        {"UTF-8 with a mark and no wide character", "\xef\xbb\xbf\xc3\xa9"s, U"é", 1},
        {"UTF-8 with a mark and an invalid byte", "\xef\xbb\xbf\xe4\xb8\xad\xff\xe4z"s, U"中\ufffd\ufffdz", 2},
        {"UTF-8 outside the basic plane", "\xe4\xb8\xad\xf0\xa0\x80\x80z"s, U"中𠀀z", 4},
        {"UTF-16 little endian", "\xff\xfe\x2d\x4e\x40\xd8\x00\xdc\x61"s + "\0"s, U"中𠀀a", 4},
        {"UTF-16 big endian", "\xfe\xff\x4e\x2d\0\x0d\0\x0a"s, U"中\r\n", 2},
        {"UTF-16 with lone surrogates and half a unit", "\xfe\xff\xdc\x00\xd8\x00\0a\x4e"s, U"\ufffd\ufffda\ufffd", 2},
        {"a mark alone", "\xff\xfe"s, U"", 1},
        {"GB18030 of four bytes", "\x81\x30\x86\x38\x95\x32\x82\x36\xd6\xd0"s, U"À𠀀中", 4},
        {"the euro of both code pages", "\x80\xa2\xe3"s, U"€€", 2},
        {"a cut last character", "\xd6\xd0\xd6"s, U"中\ufffd", 2},
        {"four bytes cut", "\xd6\xd0\x81\x30\x86"s, U"中\ufffd0\ufffd", 2},
        {"invalid bytes in the middle", "\xd6\xd0\xff\xd6\r\xb0\nz"s, U"中\ufffd\ufffd\r\ufffd\nz", 2},
        {"no such four bytes", "\x84\x31\xa5\x30z"s, U"\ufffd1\ufffd0z", 2},
        {"NUL and lone CR", "a\0b\rc"s, U"a\0b\rc"s, 1},
        {"empty", ""s, U"", 1},
    };
    for (const FileCase& row : cases) {
        const Document document = recognise_foreign(row.bytes).document;
        EXPECT_EQ(to_utf8(document.text()), to_utf8(row.text)) << row.what;
        EXPECT_EQ(document.text().width(), row.width) << row.what;
        const Document closed = document.with_closing_line_end();
        EXPECT_EQ(closed.text().str(), row.text + U"\r\n") << row.what;
        EXPECT_EQ(closed.buffer(), document.buffer()) << row.what << ": closing the last line copied the document";
    }
}

TEST(EncodeBehind, lengthens_a_file_in_its_own_encoding_and_line_ends)
{
    const std::string files[] = {
        "\xef\xbb\xbf"
        "a\r\n"s,
        "\xe4\xb8\xad\n"s,
        "\xd6\xd0\r\n"s,
        "a\n"s,
        "a\r\nb\n"s,
        ""s,
        "\xff\xfe\n\0"s,
        "\xfe\xff\0\r\0\n"s,
    };
    for (const std::string& bytes : files) {
        const ForeignText file = recognise_foreign(bytes);
        const ForeignText longer = recognise_foreign(bytes + encode_behind(file, U"目录𠀀\r\n"));
        EXPECT_EQ(to_utf8(longer.document.text().str()), to_utf8(file.document.text()) + "目录𠀀\r\n") << bytes;
        EXPECT_EQ(longer.lines_ended_in_lf, bytes.find('\n') != bytes.npos && bytes.find('\r') == bytes.npos) << bytes;
    }
}

TEST(DecodeOwn, does_not_guess)
{
    const std::string bytes = "\xe4\xb8\xad\xe5\x9b\xbd";
    EXPECT_EQ(to_utf8(recognise_foreign(bytes).document.text()), "中国");
    EXPECT_EQ(to_utf8(decode_own(bytes).text()), "涓\xee\x85\x9e浗");
}

TEST(DecodeForeign, reads_a_large_text_as_its_lines)
{
    struct Form {
        std::string mark, beyond; ///< at the beginning of the text; a character beyond the basic plane
        std::vector<std::string> cut;
    };
    const Form forms[] = {
        {"", "\x95\x32\x82\x36", {"\x81", "\x81\x30", "\x81\x30\x81", "\xd6\xd0", "\xff", "\x80"}},
        {"\xef\xbb\xbf", "\xf0\xa0\x80\x80", {"\xe4", "\xe4\xb8", "\xf0\xa0\x80", "\xe4\xb8\xad", "\xff"}}};
    constexpr std::size_t lines = 150'000;
    for (const Form& form : forms) {
        const auto line = [&](const std::string& begin, std::size_t number) {
            return begin + std::to_string(number) + form.cut[number % form.cut.size()] + "\r\n";
        };
        const auto decoded = [&](const std::string& bytes) {
            return recognise_foreign(form.mark + bytes).document.text().str();
        };
        std::vector<Text> texts;
        for (std::size_t number = 0; number < lines; ++number) texts.push_back(decoded(line("line ", number)));
        for (const std::size_t place : {lines, lines / 10, lines - 10}) { // of the character beyond; first: none
            std::string bytes = form.mark;
            Text text;
            for (std::size_t number = 0; number < lines; ++number) {
                bytes += line(number == place ? form.beyond : "line ", number);
                text += number == place ? decoded(line(form.beyond, number)) : texts[number];
            }
            EXPECT_TRUE(recognise_foreign(bytes).document.text() == TextView(text));
        }
    }
}

TEST(CodePage, loses_no_character)
{
    for (char32_t c = 0x80; c <= 0x10ffff; c = c == 0xffff ? 0x1fff0 : c < 0x10000 ? c + 1 : c + 97) {
        const Text text(1, c), back = decode_own(encode(text)).text().str();
        const bool lost = (c >= 0xd800 && c < 0xe000) || c == 0xfffd;
        if (lost) {
            ASSERT_EQ(encode(text), "?");
        } else if (back != text) { // a provisional form is read as the character of today
            ASSERT_TRUE(c >= 0xe78d && c <= 0xe864 && encode(back) == encode(text)) << std::hex << unsigned(c);
        }
    }
    EXPECT_EQ(to_utf8(decode_own("\x84\x31\x82\x36").text()), "\ufe10") << "the four bytes of an older edition";
}

TEST(DecodeForeign, a_guess_that_proves_wrong_late_leaves_nothing_behind)
{
    std::string chinese, plain(600'000, 'a'), latin;
    for (int i = 0; i < 400'000; ++i) chinese += "中", latin += "é";
    for (const std::string& bytes : {chinese + "\xff", plain + chinese + "\xff", plain + "\xd6\xd0" + plain, latin}) {
        std::size_t opened = 0;
        const auto open = [&]() -> ByteSource {
            ++opened;
            return [&bytes, place = std::size_t{0}](std::span<char> target) mutable {
                const std::size_t count =
                    bytes.copy(target.data(), std::min<std::size_t>(target.size(), 100'000), place);
                place += count;
                return count;
            };
        };
        const ForeignText text = recognise_foreign(open);
        EXPECT_TRUE(text.document.text() == decode_own(bytes).text());
        EXPECT_EQ(to_utf8(text.encoding), "GB18030");
        EXPECT_LE(opened, 2U);
    }
    EXPECT_TRUE(recognise_foreign(plain + chinese).document.text() == TextView(from_utf8(plain + chinese)));
}

TEST(DecodeForeign, passes_on_that_a_source_breaks_off)
{
    const auto open = []() -> ByteSource {
        return [parts = 0](std::span<char> target) mutable -> std::size_t {
            if (++parts == 20) throw Failure(U"磁盘读写出错");
            std::ranges::fill(target, 'a');
            return target.size();
        };
    };
    EXPECT_THROW(recognise_foreign(open), Failure);
}

} // namespace
} // namespace tarvik::test

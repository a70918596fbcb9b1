#pragma once

#include "platform/text/document.h"
#include "platform/text/text.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>

/// Bytes of files and their characters. The system's code page is CP936, and away from Windows GB18030, which holds the
/// same bytes for what GBK holds and all other characters too.
namespace tarvik {

/// Fills the beginning of a span with the next bytes of a file and gives how many they are; 0 at the end. It may be
/// called in another thread, by one at a time.
using ByteSource = std::function<std::size_t(std::span<char>)>;
/// Opens the same bytes from their start, as often as it is called.
using OpenBytes = std::function<ByteSource()>;

/// A file from outside with what it was recognised as.
struct ForeignText {
    Document document;
    std::u32string_view encoding;
    bool lines_ended_in_lf = false; ///< alone, so that they got their CR here
};
/// A byte order mark (UTF-8, UTF-16 either way) decides; else text that is valid UTF-8 and holds a character of three
/// bytes or more is UTF-8; else it is GB18030 with 0x80 for the euro sign. No byte is refused: whatever is invalid
/// becomes U+FFFD and reading goes on with the next byte. A text whose lines end in LF alone, as those of other systems
/// do, gets CR LF. Two characters, CR LF, are laid behind the text in the buffer, outside of text(), so that opening a
/// document needs no copy. The bytes are read in blocks and stand nowhere as a whole; what opening and reading them
/// throws passes through.
ForeignText recognise_foreign(const OpenBytes& open);
ForeignText recognise_foreign(std::string_view bytes);

/// What goes behind the end of such a file: the text in its encoding, its CR LF as the file ends its lines.
std::string encode_behind(const ForeignText& file, TextView text);

/// A file that the program wrote itself: the system's code page, with no guess.
Document decode_own(std::string_view bytes);

/// The bytes of a text in the system's code page. U+FFFD and lone surrogates become "?".
std::string encode(TextView text);
void encode_to(TextView text, std::string& target);

/// The signed 16-bit code that a character has in GBK: 0 to 128 for a single byte, negative for a Chinese character, 63
/// ("?") for a character that GBK lacks.
int char_code(char32_t character) noexcept;

} // namespace tarvik

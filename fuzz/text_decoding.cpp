#include "fuzz/target.h"
#include "platform/text/code_page.h"

#include <algorithm>

/// Bytes become characters whatever they are; what stands before them in the file changes nothing, and characters come
/// back from the disk as they were.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tarvik;
    using namespace tarvik::fuzz;
    const auto bytes = bytes_of_input(data, size);
    const Document own = decode_own(bytes);
    const Text text = own.text().str();
    require(text.size() <= size, "no more characters than bytes");
    require(own.lowered().str() == lower(own.text()) && own.lowered().size() == text.size(), "the lower-cased twin");
    const Document closed = own.with_closing_line_end();
    require(closed.text().str() == text + U"\r\n", "the line end behind the text");

    // Fast ways take eight bytes or a stretch at once: wherever the text begins it must be the same.
    for (const std::size_t before : {1U, 7U, 4093U})
        require(decode_own(std::string(before, 'a').append(bytes)).text().substr(before).str() == text,
                "the same text behind another beginning");

    const auto can_be_kept = [](char32_t c) { return c != 0xfffd && (c < 0xd800 || c > 0xdfff); };
    if (std::all_of(text.begin(), text.end(), can_be_kept))
        require(decode_own(encode(text)).text().str() == text, "written and read back");
    require(from_utf8(to_utf8(text)) == text, "UTF-8 and back");

    const Text read = recognise_foreign(bytes).document.text().str();
    const bool has_lf = read.find(U'\n') != Text::npos;
    require(!has_lf || read.find(U'\r') != Text::npos, "no line ends in LF alone");
    return 0;
}

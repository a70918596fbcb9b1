#include "office/packages/file_kind.h"

#include <string>

namespace tarvik {

namespace {

constexpr std::string_view ole_signature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr std::string_view zip_signature = "PK";

// Whether an OLE2 file has a stream or storage of this name; its directory holds names in UTF-16.
bool has_stream(std::string_view bytes, std::string_view name)
{
    std::string wide;
    for (const char c : name) wide.append({c, '\0'});
    return bytes.find(wide) != std::string_view::npos;
}

} // namespace

bool is_compound_file(std::string_view beginning) noexcept
{
    return beginning.starts_with(ole_signature);
}

FileKind file_kind(std::string_view bytes)
{
    if (bytes.empty()) return FileKind::Empty;
    if (bytes.starts_with(zip_signature)) return FileKind::Package;
    if (!is_compound_file(bytes)) return FileKind::Other;
    if (has_stream(bytes, "EncryptedPackage")) return FileKind::Encrypted;
    if (has_stream(bytes, "WordDocument")) return FileKind::OldDocument;
    if (has_stream(bytes, "Workbook") || has_stream(bytes, "Book")) return FileKind::OldWorkbook;
    return FileKind::Other;
}

} // namespace tarvik

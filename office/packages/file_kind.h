#pragma once

#include <string_view>

namespace tarvik {

/// What the bytes of an office file are, whatever its name says.
enum class FileKind {
    Empty,
    Package,     ///< a zip file: .xlsx, .docx and their like
    Encrypted,   ///< a package behind a password
    OldWorkbook, ///< .xls
    OldDocument, ///< .doc
    Other
};

FileKind file_kind(std::string_view bytes);
/// Whether bytes that begin so hold streams and storages of their own, as files of the older formats do and packages
/// behind a password. Eight bytes tell.
bool is_compound_file(std::string_view beginning) noexcept;

} // namespace tarvik

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

} // namespace tarvik

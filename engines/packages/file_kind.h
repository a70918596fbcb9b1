#pragma once

#include <string_view>

namespace tarvik {

/// What the bytes of an office file are, whatever its name says.
enum class FileKind {
    Empty,
    Package,   ///< a zip file: .xlsx, .docx and their like
    Workbook,  ///< .xls
    Document,  ///< .doc
    Encrypted, ///< behind a password, in the older formats or the newer ones
    Damaged,   ///< a compound file that is cut off or damaged
    Other
};

FileKind file_kind(std::string_view bytes);

} // namespace tarvik

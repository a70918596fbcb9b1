#pragma once

#include <string_view>

namespace tarvik::libreoffice {

/// What the bytes of a file are.
enum class FileKind {
    Other,
    Package,   ///< a zip package
    Workbook,  ///< a binary workbook
    Document,  ///< a binary document
    Encrypted, ///< behind a password
    Damaged,   ///< a compound file, cut off or damaged
};

FileKind kind_of(std::string_view bytes);

/// Throws Damage, with what the bytes are, when they are neither of the kind nor a package.
void require_kind(std::string_view bytes, FileKind kind);

} // namespace tarvik::libreoffice

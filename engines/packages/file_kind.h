#pragma once

#include <string>
#include <string_view>

namespace tarvik {

/// What the bytes of an office file are, whatever its name says.
enum class FileKind {
    Empty,
    Package,   ///< a zip file: .xlsx, .docx and their like
    Workbook,  ///< .xls
    Document,  ///< .doc
    Encrypted, ///< behind a password, in the older formats or the newer ones; it may be the one that all know
    Damaged,   ///< a file of the older formats that is cut off or damaged
    Other
};

FileKind file_kind(std::string_view bytes);

inline constexpr std::u32string_view locked_reason = U"文件设有打开密码，请先去掉密码。";
/// What the bytes are. Throws Damage, with what that is, when they are neither of the kind nor a package. A workbook
/// behind a password passes: it may be the usual one, which LibreOffice knows.
FileKind require_kind(std::string_view bytes, FileKind kind);

/// Takes out of a workbook of the older format the advice to open it for reading alone, where that can be read.
void remove_read_only_advice(std::string& workbook);
/// Whether a workbook or document brings macros along, whichever format it has. Throws Damage for a package that cannot
/// be read.
bool has_macros(std::string_view bytes);

} // namespace tarvik

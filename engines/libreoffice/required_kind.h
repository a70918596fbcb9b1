#pragma once

#include "engines/packages/file_kind.h"

namespace tarvik::libreoffice {

/// What the bytes are. Throws Damage, with what that is, when they are neither of the kind nor a package. A workbook
/// behind a password passes: it may be the usual one, which LibreOffice knows.
FileKind require_kind(std::string_view bytes, FileKind kind);
inline constexpr std::u32string_view locked_reason = U"文件设有打开密码，请先去掉密码。";

} // namespace tarvik::libreoffice

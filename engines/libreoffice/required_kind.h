#pragma once

#include "engines/packages/file_kind.h"

namespace tarvik::libreoffice {

/// Throws Damage, with what the bytes are, when they are neither of the kind nor a package.
void require_kind(std::string_view bytes, FileKind kind);

} // namespace tarvik::libreoffice

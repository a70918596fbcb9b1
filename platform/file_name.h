#pragma once

#include "platform/text.h"

/// Names made of report fields: no field may lead out of the folder that a file is made for.
namespace tarvik {

/// A part inside of a name: characters that no file name can hold (\ / : * ? " < > | and those below U+0020) become
/// "_". Everything else stays, blanks and points at the end included; an empty part stays empty.
Text safe_name_part(TextView part);

/// A whole file or folder name, without its path: the same, and a name that would be empty, "." or ".." becomes "_". A
/// name of more than 240 bytes in UTF-8 loses characters before its extension.
Text safe_file_name(TextView name);

} // namespace tarvik

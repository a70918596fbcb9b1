#pragma once

#include "platform/text/text.h"

/// Names that no file of this system can have though each of their characters is good.
namespace tarvik {

bool is_usable_name(TextView name);
/// The name itself, or the nearest that a file can have.
Text usable_name(Text name);

} // namespace tarvik

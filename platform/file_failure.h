#pragma once

#include "platform/failure.h"

namespace tarvik {

/// "无法<action>“<path>”：<reason>。", the reason being the words for the system's error number.
Failure file_failure(TextView action, TextView path, int error);

} // namespace tarvik

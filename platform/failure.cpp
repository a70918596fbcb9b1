#include "platform/failure.h"

#include <utility>

namespace tarvik {

Failure::Failure(Text message) : message_(std::move(message)), utf8_(to_utf8(message_)) {}

} // namespace tarvik

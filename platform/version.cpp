#include "platform/program_start.h"

namespace tarvik {

std::string_view version() noexcept
{
    return TARVIK_VERSION;
}

} // namespace tarvik

#include "events/commands.h"

#include "calendar/attendance/attendance.h"
#include "dockets/repair_docket.h"

#include <array>

namespace tarvik {

CommandTable report_commands()
{
    static constexpr ImmediateCommand immediate[] = {{U"An kqtest", an_kqtest}};
    static const std::array reports{docket_command()};
    return {immediate, reports};
}

std::span<const SheetFamily> sheet_families()
{
    static const std::array families{docket_family()};
    return families;
}

} // namespace tarvik

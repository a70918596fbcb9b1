#include "events/commands.h"

#include "calendar/attendance/attendance.h"
#include "designer/designer_window.h"
#include "dockets/repair_docket.h"
#include "dockets/test_docket.h"
#include "office/character_list.h"
#include "office/label_list.h"
#include "repair_rules/repair_commands.h"

#include <array>

namespace tarvik {

CommandTable report_commands()
{
    static constexpr ImmediateCommand immediate[] = {
        {.text = U"An kqtest", .run = an_kqtest, .during_runs = false},
        {.text = U"An disappear", .run = hide_designer},
        {.text = U"An appear", .run = show_designer},
        {.text = U"An statistic", .run = list_characters},
    };
    static const std::array reports{
        order_command(),
        prices_command(),
        docket_command(),
        test_docket_command(),
        label_command(),
    };
    return {immediate, reports};
}

TimerTable batch_timers()
{
    static const std::array families{docket_family(), test_docket_family()};
    return {families, {}};
}

} // namespace tarvik

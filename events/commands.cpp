#include "events/commands.h"

#include "calendar/attendance/attendance.h"
#include "designer/designer.h"
#include "dockets/dockets.h"
#include "lists/lists.h"
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
    // One row a line, in the order in which they are tested
    // clang-format off
    static const std::array reports{
        order_command,
        prices_command,
        keptfile_command,
        excelfile_command,
        tomation_command,
        sesame_open_command,
        docket_command,
        service_bill_command,
        service_list_command,
        service_summary_command,
        repair_report_command,
        test_docket_command,
        template_command_a,
        template_command_b,
        label_command,
    };
    // clang-format on
    return {immediate, reports};
}

TimerTable batch_timers()
{
    static const std::array families{docket_family,   test_docket_family,   service_bill_family, service_list_family,
                                     template_family, repair_report_family, tomation_family};
    static const std::array own_ticks{excelfile_tick};
    return {families, own_ticks};
}

} // namespace tarvik

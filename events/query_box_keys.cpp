#include "events/query_box_keys.h"

#include "columns/keys.h"
#include "events/commands.h"
#include "printing/page_box.h"
#include "reading/reading.h"

namespace tarvik {

namespace {

constexpr char32_t enter = U'\r';
constexpr int query_box = 1;
constexpr int page_box = 4;

/// Gives whether the handler knew the key; `eaten` keeps it from the box.
using KeyHandler = bool (*)(Program& program, int index, char32_t key, bool& eaten);

bool report_command_key(Program& program, int index, char32_t key, bool&)
{
    return index == query_box && key == enter && run_command(program, report_commands());
}

bool column_key(Program& program, int index, char32_t key, bool& eaten)
{
    return index == query_box && column_keys(program, key, eaten);
}

bool page_box_key(Program& program, int index, char32_t key, bool&)
{
    if (index != page_box || key != enter) return false;
    print_by_name(program);
    return true;
}

bool text_query_key(Program& program, int, char32_t key, bool&)
{
    if (key != enter) return false;
    query_by_enter(program);
    return true;
}

constexpr KeyHandler handlers[] = {report_command_key, column_key, page_box_key, text_query_key};

} // namespace

bool Text1_KeyPress(Program& program, int index, char32_t key, bool& eaten)
{
    for (const KeyHandler handler : handlers)
        if (handler(program, index, key, eaten)) return true;
    return false;
}

} // namespace tarvik

#include "dockets/sheet_parts.h"

#include <algorithm>

namespace tarvik {

Text first_field(const Program& program, std::size_t column)
{
    return program.module1.suf.cell(0, column).str();
}

std::size_t record_count(const Program& program)
{
    return static_cast<std::size_t>(std::max(0.0, program.form1.recordcount));
}

Text first_word(TextView text)
{
    return text.substr(0, text.find(U' ')).str();
}

bool sheet_wanted(const Program& program, TextView command)
{
    return program.form1.dbresult && TextView(program.form1.query_box().text()).contains(command);
}

bool saves_sheets(Program& program, TextView command)
{
    const bool leads = command_leads(program, command);
    if (!leads) program.run.ahead_of_command = true;
    return leads;
}

void save_sheet(Program& program, SpreadsheetTask& task, TextView command, const SheetName& name)
{
    const bool saves = saves_sheets(program, command);
    if (saves) task.save_as(sheet_path(program, name));
    task.finish(saves ? Changes::Save : Changes::Discard);
}

} // namespace tarvik

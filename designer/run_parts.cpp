#include "designer/run_parts.h"

#include "columns/columns.h"
#include "runs/folder_walk.h"

namespace tarvik {

Text run_key(const Program& program)
{
    const int cursor = program.form1.batchcursor;
    return cursor < 0 ? Text() : program.module1.keylist.get(static_cast<std::size_t>(cursor)).str();
}

void take_key_rows(Program& program)
{
    devision1(program);
    program.form1.rowcount = program.form1.partcount;
}

bool choose_source_folder(Program& program)
{
    Form1& form1 = program.form1;
    if (form1.folderchosen) return true;
    auto picked = pick_file(program, workbook_filter);
    if (!picked) return false;
    form1.sourcefolder = std::move(picked->folder);
    form1.folderchosen = true;
    return true;
}

} // namespace tarvik

#include "designer/source_folder.h"

#include "runs/folder_walk.h"

namespace tarvik {

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

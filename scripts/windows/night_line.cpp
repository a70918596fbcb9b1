#include "platform/files/path_text.h"
#include "scripts/task_files.h"

namespace tarvik {

Text night_line(const std::filesystem::path& player, TextView name)
{
    return U"schtasks /Create /SC DAILY /ST 02:00 /TN \"Tarvik " + name + U"\" /TR \"\\\"" + text_of(player) +
           U"\\\" \\\"" + name + U"\\\"\"";
}

} // namespace tarvik

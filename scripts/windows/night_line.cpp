#include "platform/files/paths.h"
#include "scripts/task_files.h"

namespace tarvik {

std::vector<NightLine> night_lines(const std::filesystem::path& player, TextView name)
{
    return {{U"命令提示符", U"schtasks /Create /SC DAILY /ST 02:00 /TN \"Tarvik " + name + U"\" /TR \"\\\"" +
                                text_of(player) + U"\\\" \\\"" + name + U"\\\"\""}};
}

} // namespace tarvik

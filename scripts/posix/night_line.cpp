#include "platform/files/path_text.h"
#include "scripts/task_files.h"

namespace tarvik {

namespace {

// A word of a line of cron: the shell takes it as it stands, and cron no "%" as the line's end.
Text cron_word(TextView word)
{
    Text quoted = U"'";
    for (const char32_t character : word.str()) {
        if (character == U'\'') quoted += U"'\\''";
        else if (character == U'%') quoted += U"'\\%'";
        else quoted += character;
    }
    return quoted + U"'";
}

} // namespace

Text night_line(const std::filesystem::path& player, TextView name)
{
    return U"0 2 * * * " + cron_word(text_of(player)) + U" " + cron_word(name);
}

} // namespace tarvik

#include "platform/files/paths.h"
#include "scripts/task_files.h"

#include <map>

namespace tarvik {

namespace {

Text with_each(TextView text, const std::map<char32_t, std::u32string_view>& replacements)
{
    Text result;
    for (const char32_t character : text.str()) {
        const auto found = replacements.find(character);
        if (found == replacements.end()) result += character;
        else result += found->second;
    }
    return result;
}

// A word that the shell takes as it stands.
Text shell_word(TextView word)
{
    return U"'" + with_each(word, {{U'\'', U"'\\''"}}) + U"'";
}

// For cron a "%" ends the line, inside of quotes too.
Text cron_word(TextView word)
{
    return U"'" + with_each(word, {{U'\'', U"'\\''"}, {U'%', U"'\\%'"}}) + U"'";
}

// A word of a unit's command, where "%" and "$" stand for something else.
Text unit_word(TextView word)
{
    return U"\"" + with_each(word, {{U'"', U"\\\""}, {U'\\', U"\\\\"}, {U'%', U"%%"}, {U'$', U"$$"}}) + U"\"";
}

// Writes a service and its timer into the user's units and switches the timer on; it outlives the session.
Text unit_commands(TextView player, TextView name)
{
    return U"u=tarvik-$(systemd-escape " + shell_word(name) +
           U"); d=~/.config/systemd/user; mkdir -p \"$d\" && printf '%s\\n' '[Service]' 'Type=oneshot' " +
           shell_word(U"ExecStart=" + unit_word(player) + U" " + unit_word(name)) +
           U" > \"$d/$u.service\" && printf '%s\\n' '[Timer]' 'OnCalendar=02:00' 'Persistent=true' '[Install]' "
           U"'WantedBy=timers.target' > \"$d/$u.timer\" && systemctl --user enable --now \"$u.timer\"";
}

} // namespace

std::vector<NightLine> night_lines(const std::filesystem::path& player, TextView name)
{
    const Text program = text_of(player);
    return {{U"crontab -e", U"0 2 * * * " + cron_word(program) + U" " + cron_word(name)},
            {U"systemd：终端", unit_commands(program, name)}};
}

} // namespace tarvik

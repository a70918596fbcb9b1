#include "platform/large_blocks/large_blocks.h"
#include "playback/player.h"

#include <csignal>
#include <fstream>
#include <iostream>

namespace {

constexpr const char* usage =
    "tarvik-play [--install DIR] [--drive L=DIR]... [--clock \"YYYY-MM-DD hh:mm:ss\"] [--screen W H]\n"
    "            [--print-to DIR] [--engine ooxml|libreoffice|auto] [--names] SCRIPT\n";

std::filesystem::path program_folder()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

int play_script(const tarvik::Options& options)
{
    if (options.script == "-") return tarvik::play(options, std::cin, std::cout, std::cerr);
    std::ifstream script(options.script, std::ios::binary);
    if (!script || std::filesystem::is_directory(options.script)) {
        std::cerr << "tarvik-play: the script " << options.script << " cannot be read\n";
        return 1;
    }
    return tarvik::play(options, script, std::cout, std::cerr);
}

} // namespace

int main(int count, char** words)
{
    tarvik::reuse_freed_memory();
    // A closed pipe or a limit of size is a failed write, which the user hears of, and no sudden end.
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
    try {
        const std::span<const char* const> arguments(words, static_cast<std::size_t>(count));
        const tarvik::Options options = tarvik::parse_options(arguments.subspan(1), program_folder());
        if (!options.list_names) return play_script(options);
        tarvik::list_names(options, std::cout);
        return 0;
    } catch (const tarvik::OptionError& error) {
        std::cerr << "tarvik-play: " << error.what() << '\n' << usage;
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "tarvik-play: " << error.what() << '\n';
        return 1;
    }
}

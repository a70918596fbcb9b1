#include "platform/large_blocks/large_blocks.h"
#include "platform/path_text.h"
#include "platform/program_start.h"
#include "platform/system_paths.h"
#include "playback/player.h"

#include <fstream>
#include <iostream>

namespace {

constexpr const char* usage =
    "tarvik-play [--install DIR] [--drive L=DIR]... [--clock \"YYYY-MM-DD hh:mm:ss\"] [--screen W H]\n"
    "            [--print-to DIR] [--engine ooxml|libreoffice|auto] [--names] SCRIPT\n";

int play_script(const tarvik::Options& options)
{
    if (options.script == "-") return tarvik::play(options, std::cin, std::cout, std::cerr);
    const std::filesystem::path file = tarvik::path_of_utf8(options.script);
    std::ifstream script(file, std::ios::binary);
    if (!script || std::filesystem::is_directory(file)) {
        std::cerr << "tarvik-play: the script " << options.script << " cannot be read\n";
        return 1;
    }
    return tarvik::play(options, script, std::cout, std::cerr);
}

} // namespace

int main(int count, char** words)
{
    tarvik::reuse_freed_memory();
    const std::vector<std::string> told = tarvik::start_program(count, words);
    try {
        const tarvik::Options options = tarvik::parse_options(told, tarvik::program_file().parent_path());
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

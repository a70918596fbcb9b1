#include "platform/files/paths.h"
#include "platform/files/working_folder.h"
#include "platform/program_start.h"
#include "playback/player.h"
#include "scripts/task_files.h"

#include <fstream>
#include <iostream>

namespace {

using tarvik::Options;

constexpr const char* usage =
    "tarvik-play [--install DIR] [--drive L=DIR]... [--clock \"YYYY-MM-DD hh:mm:ss\"] [--screen W H]\n"
    "            [--print-to DIR] [--engine ooxml|libreoffice|auto] [--set NAME=VALUE]... SCRIPT\n"
    "tarvik-play --names|--help|--version\n";

constexpr const char* help =
    "\n"
    "Plays SCRIPT, a file or - for standard input, in the program without a screen. A script that is\n"
    "not found as it is given is a task of that name, else one of the installation folder's own.\n"
    "\n"
    "  --install DIR    the installation folder; without it the program's own folder where it may\n"
    "                   write there, else the user's own one\n"
    "  --drive L=DIR    where the root of the drive letter L lies, made if it is not there; without it\n"
    "                   the home folder; on Windows the drive itself, so that a computer without a\n"
    "                   drive D: needs --drive d=DIR\n"
    "  --clock TIME     the time at the start; time passes by the script alone\n"
    "  --screen W H     the size of the screen in twips\n"
    "  --print-to DIR   what is printed is put there as a copy; without it printing is a failure\n"
    "  --engine NAME    what fills workbooks and documents\n"
    "  --set NAME=VALUE what the script asks for by that name\n"
    "  --names          prints the names that a script can ask for\n"
    "  --help           prints this\n"
    "  --version        prints the version\n"
    "\n"
    "The status is 0 when the script reached its end and all that it expected held, 1 when not, 2 for\n"
    "options that cannot be used.\n";

/// A name that is not there as it is given is that of a task, else one of the installation folder's own scripts.
std::filesystem::path script_file(const Options& options)
{
    namespace fs = std::filesystem;
    fs::path given = tarvik::path_of_utf8(options.script);
    const fs::path task =
        options.installation / tarvik::path_of(tarvik::task_folder) / tarvik::path_of_utf8(options.script + ".play");
    std::error_code error;
    for (const fs::path& file : {given, task, options.installation / given})
        if (fs::exists(file, error)) return file;
    return given;
}

/// A drive whose folder was not made would take the user's output into the void.
void make_drives(const Options& options)
{
    for (const auto& [letter, folder] : options.drives) {
        std::error_code error;
        std::filesystem::create_directories(folder, error);
        if (error)
            throw tarvik::OptionError("--drive cannot make the folder " + tarvik::utf8_of(folder) + ": " +
                                      error.message());
    }
}

int play_script(Options options)
{
    make_drives(options);
    if (options.installation.empty()) {
        tarvik::WorkingFolder folder = tarvik::open_working_folder();
        options.installation = std::move(folder.path);
        options.notice = std::move(folder.trouble);
    }
    if (options.script == "-") return tarvik::play(options, std::cin, std::cout, std::cerr);
    const std::filesystem::path file = script_file(options);
    std::ifstream script(file, std::ios::binary);
    if (!script || std::filesystem::is_directory(file)) {
        std::cerr << "tarvik-play: the script " << options.script << " cannot be read\n";
        return 1;
    }
    return tarvik::play(options, script, std::cout, std::cerr);
}

int do_as_asked(Options options)
{
    switch (options.request) {
    case Options::Request::Play: return play_script(std::move(options));
    case Options::Request::Names: tarvik::list_names(std::cout); break;
    case Options::Request::Help: std::cout << usage << help; break;
    case Options::Request::Version: std::cout << "tarvik-play " << tarvik::version() << '\n'; break;
    }
    return std::cout.flush() ? 0 : 1;
}

} // namespace

int main(int count, char** words)
{
    const std::vector<std::string> arguments = tarvik::start_program(count, words);
    try {
        return do_as_asked(tarvik::parse_options(arguments));
    } catch (const tarvik::OptionError& error) {
        std::cerr << "tarvik-play: " << error.what() << '\n' << usage;
        return 2;
    } catch (const std::exception& error) {
        std::cerr << "tarvik-play: " << error.what() << '\n';
        return 1;
    }
}

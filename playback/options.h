#pragma once

#include "runs/engines.h"

#include <chrono>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>

namespace tarvik {

/// Options that cannot be used, with the reason.
class OptionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Options {
    enum class Request { Play, Names, Help, Version };

    Request request = Request::Play;
    std::filesystem::path installation;           ///< empty when none is given
    Text notice;                                  ///< a message for the user, once the window stands
    std::map<char, std::filesystem::path> drives; ///< by lower-case letter
    std::chrono::local_seconds clock;
    double screen_width = 28800, screen_height = 16200; ///< twips
    std::optional<std::filesystem::path> print_to;
    Engine engine = Engine::Auto;
    std::map<Text, Text> values; ///< of what the script asks for, by name
    std::string script;          ///< a file, the name of a task, or - for standard input
};

/// `arguments` go without the program's own name. Throws OptionError.
Options parse_options(std::span<const std::string> arguments);

} // namespace tarvik

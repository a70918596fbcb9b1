#include "tests/support/places.h"

#include <cstdio>
#include <memory>

namespace tarvik::test {

std::string source_folder()
{
    return TARVIK_SOURCE_DIR;
}

std::string built_installation()
{
    return TARVIK_INSTALLATION;
}

std::string read_by_python(const std::string& script, const std::filesystem::path& file)
{
    const std::string interpreter = std::filesystem::exists("/usr/bin/python3") ? "/usr/bin/python3" : "python3";
    const auto command = interpreter + " -W ignore " + source_folder() + "/" + script + " '" + file.string() + "' 2>&1";
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe(popen(command.c_str(), "r"), pclose);
    std::string printed;
    for (int c = std::fgetc(pipe.get()); c != EOF; c = std::fgetc(pipe.get())) printed += static_cast<char>(c);
    return printed;
}

} // namespace tarvik::test

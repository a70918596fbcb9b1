#include "tests/support/places.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>

namespace tarvik::test {

namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

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

std::map<std::string, std::string> files_below(const fs::path& folder)
{
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file()) files[fs::relative(entry.path(), folder).string()] = contents(entry.path());
    return files;
}

std::string replaced(std::string text, const std::string& old, const std::string& by)
{
    for (std::size_t at = 0; (at = text.find(old, at)) != std::string::npos; at += by.size())
        text.replace(at, old.size(), by);
    return text;
}

Played play_script(const fs::path& script, const fs::path& root, const std::string& options)
{
    const std::string at = root.string();
    const std::string command = "'" + built_installation() + "/tarvik-play' --install " + at +
                                "/installation --drive d=" + at + "/d " + options + " " + script.string() + " >" + at +
                                "/out 2>" + at + "/err";
    const int status = std::system(command.c_str());
    return {contents(root / "out"), contents(root / "err"), status};
}

} // namespace tarvik::test

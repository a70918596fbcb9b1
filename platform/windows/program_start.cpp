#include "platform/program_start.h"

#include "platform/files/path_text.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <windows.h>

#include <shellapi.h> // needs the one above

namespace tarvik {

std::vector<std::string> start_program(int /*count*/, char** /*words*/)
{
    for (std::FILE* stream : {stdin, stdout, stderr}) ::_setmode(::_fileno(stream), _O_BINARY);
    ::SetConsoleOutputCP(CP_UTF8);
    ::SetErrorMode(SEM_FAILCRITICALERRORS); // an empty drive is a failure and no box of the system's

    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&::LocalFree)> words(::CommandLineToArgvW(::GetCommandLineW(), &count),
                                                                ::LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(utf8_of(words.get()[i]));
    return arguments;
}

} // namespace tarvik

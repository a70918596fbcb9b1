#include "platform/program_start.h"

#include "platform/files/path_text.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <windows.h>

#include <shellapi.h> // needs the one above

namespace tarvik {

namespace {

/// The console writes UTF-8 while the program runs. Whoever works in it next finds it as it was: a batch file's own
/// words would be unreadable.
class ConsoleWords {
public:
    ConsoleWords()
    {
        static const ConsoleWords words_in_utf8;
        ::SetConsoleCtrlHandler(restore, TRUE);
    }
    ~ConsoleWords()
    {
        (void)std::fflush(nullptr); // what is still to be written is UTF-8
        restore(0);
    }
    ConsoleWords(const ConsoleWords&) = delete;
    ConsoleWords& operator=(const ConsoleWords&) = delete;

private:
    /// As a handler of Ctrl+C it leaves the rest to the system.
    static BOOL WINAPI restore(DWORD /*event*/)
    {
        if (before != 0) ::SetConsoleOutputCP(before);
        return FALSE;
    }

    static const inline UINT before = ::GetConsoleOutputCP(); // 0 where there is no console
};

} // namespace

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

#include "platform/program_start.h"

#include "platform/large_pages.h"

#include "platform/files/paths.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <io.h>
#include <memory>
#include <windows.h>

#include <shellapi.h> // needs the one above

namespace tarvik {

namespace {

/// 0 where there is no console.
const UINT code_page_before = ::GetConsoleOutputCP();

/// As a handler of Ctrl+C it leaves the rest to the system.
BOOL WINAPI restore_code_page(DWORD /*event*/)
{
    if (code_page_before != 0) ::SetConsoleOutputCP(code_page_before);
    return FALSE;
}

/// Until the program ends: whoever works in the console next finds it as it was. A batch file's own words would be
/// unreadable.
void write_utf8_to_console()
{
    ::SetConsoleOutputCP(CP_UTF8);
    ::SetConsoleCtrlHandler(restore_code_page, TRUE);
    std::atexit([] {
        (void)std::fflush(nullptr); // what is still to be written is UTF-8
        restore_code_page(0);
    });
}

} // namespace

std::vector<std::string> start_program(int /*count*/, char** /*words*/)
{
    for (std::FILE* stream : {stdin, stdout, stderr}) ::_setmode(::_fileno(stream), _O_BINARY);
    write_utf8_to_console();
    ::SetErrorMode(SEM_FAILCRITICALERRORS); // an empty drive is a failure and no box of the system's

    int count = 0;
    const std::unique_ptr<LPWSTR, decltype(&::LocalFree)> words(::CommandLineToArgvW(::GetCommandLineW(), &count),
                                                                ::LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; i < count; ++i) arguments.push_back(utf8_of(words.get()[i]));
    return arguments;
}

void prefer_large_pages(void* /*block*/, std::size_t /*bytes*/) noexcept {}

} // namespace tarvik

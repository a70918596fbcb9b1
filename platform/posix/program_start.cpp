#include "platform/program_start.h"

#include <csignal>

namespace tarvik {

std::vector<std::string> start_program(int count, char** words)
{
    // A limit of size, too, is a failed write, which the user hears of, and no sudden end.
    for (const int signal : {SIGPIPE, SIGXFSZ}) std::signal(signal, SIG_IGN);
    return {words + (count > 0 ? 1 : 0), words + count};
}

} // namespace tarvik

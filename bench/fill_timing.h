#pragma once

#include "platform/files/files.h"
#include "runs/engines.h"

#include <functional>
#include <string>
#include <vector>

/// What the programs share that fill a file through an engine again and again and tell how long that took.
namespace tarvik {

struct Filling {
    Engine engine = Engine::LibreOffice;
    int count = 0;
    /// Makes the file of that number. One of number 0 is made ahead, which starts the engine and does not count.
    std::function<void(OfficeEngines&, int number)> fill;
};

/// The first word is the folder of all files. Prints the seconds, or to the other output why there are none; gives what
/// main() does.
int time_filling(const std::string& program, const std::vector<std::string>& words,
                 const std::function<Filling(const Files&)>& prepare);

} // namespace tarvik

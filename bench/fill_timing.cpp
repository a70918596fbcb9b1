#include "bench/fill_timing.h"

#include "platform/files/files.h"

#include <chrono>
#include <iostream>

namespace tarvik {

namespace {

class NoPrinter final : public Printer {
public:
    void print(const std::filesystem::path& /*file*/, TextView /*name*/) override {}
};

double seconds_of(const std::vector<std::string>& words, const std::function<Filling(const Files&)>& prepare)
{
    Files files{std::filesystem::path(words.at(0))};
    NoPrinter printer;
    const Filling filling = prepare(files);
    libreoffice::LibreOffice office({.plugin = TARVIK_LIBREOFFICE_PLUGIN});
    const auto engines = make_engines(filling.engine, files, printer, office);
    filling.fill(*engines, 0);
    const auto start = std::chrono::steady_clock::now();
    for (int number = 1; number <= filling.count; ++number) filling.fill(*engines, number);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

int time_filling(const std::string& program, const std::vector<std::string>& words,
                 const std::function<Filling(const Files&)>& prepare)
{
    try {
        std::cout << seconds_of(words, prepare) << '\n';
        return 0;
    } catch (const std::exception& error) {
        std::cerr << program << ": " << error.what() << '\n';
        return 1;
    }
}

} // namespace tarvik

#include "dictionary_tool/dictionary_files.h"
#include "fuzz/target.h"
#include "platform/failure.h"
#include "tests/support/test_program.h"

#include <algorithm>
#include <array>
#include <fstream>

/// The files of a dictionary, listed in one input, become ours or are refused.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tarvik;
    constexpr std::array<std::string_view, 7> known{"d.ifo",     "d.idx",   "d.dict",  "d.syn",
                                                    "d.dict.dz", "d.index", "d.idx.gz"};
    const test::TemporaryFolder folder;
    for (const auto& [name, contents] : fuzz::listed_files(fuzz::bytes_of_input(data, size))) {
        if (std::find(known.begin(), known.end(), name) == known.end()) continue;
        std::ofstream(folder.path() / name, std::ios::binary) << contents;
    }
    for (const auto use : {DictionaryUse::English, DictionaryUse::Chinese})
        for (const char* file : {"d.ifo", "d.index"}) {
            DictionaryFiles made(use, U"词典");
            std::size_t entries = 0;
            try {
                read_dictionary_source(folder.path() / file,
                                       [&](const SourceEntry& entry) { entries += made.add(entry) ? 1 : 0; });
            } catch (const Failure&) { // the user is told
                continue;
            }
            const auto written = made.bytes();
            fuzz::require(entries == 0 || !written.empty(), "entries stand in a file");
        }
    return 0;
}

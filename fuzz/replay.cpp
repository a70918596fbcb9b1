#include "fuzz/target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

/// Plays the inputs in the folders that are told, without any search.
int main(int count, char** words)
{
    std::vector<std::filesystem::path> inputs;
    for (const auto& folder : std::vector<std::filesystem::path>(words + 1, words + count))
        for (const auto& entry : std::filesystem::directory_iterator(folder)) inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());
    for (const auto& input : inputs) {
        std::cout << input.filename().string() << std::endl; // the last one told is the one that fails
        std::ifstream file(input, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    }
    return inputs.empty() ? 1 : 0;
}

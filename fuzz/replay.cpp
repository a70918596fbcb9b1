#include "fuzz/target.h"
#include "tests/support/packages.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

/// Plays the inputs in folders without any search: each as it is, then as often as the first word says damaged as
/// chance has it.
int main(int count, char** words)
{
    if (count < 2) return 1;
    const int times_damaged = std::atoi(words[1]);
    std::mt19937 random(20'240'302);
    std::vector<std::filesystem::path> inputs;
    for (const auto& folder : std::vector<std::filesystem::path>(words + 2, words + count))
        for (const auto& entry : std::filesystem::directory_iterator(folder)) inputs.push_back(entry.path());
    std::sort(inputs.begin(), inputs.end());
    for (const auto& input : inputs) {
        std::cout << input.filename().string() << std::endl; // the last one told is the one that fails
        std::ifstream file(input, std::ios::binary);
        std::string bytes{std::istreambuf_iterator<char>(file), {}};
        const std::string whole = bytes;
        for (int time = 0; time <= times_damaged; ++time) {
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            tarvik::test::spoil(bytes = whole, random);
        }
    }
    return inputs.empty() ? 1 : 0;
}

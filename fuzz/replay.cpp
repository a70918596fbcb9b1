#include "fuzz/target.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

namespace {

/// Damages one to four places as chance has it, by other characters or by pieces that go or come twice.
void spoil(std::string& bytes, std::mt19937& random)
{
    const std::string marks = "<>/\"'&;=:!? rcvfwpt019\r\n";
    const auto below = [&random](std::size_t limit) { return random() % limit; };
    for (auto count = below(4) + 1; count > 0 && !bytes.empty(); --count) {
        const auto at = below(bytes.size());
        switch (below(4)) {
        case 0: bytes[at] = static_cast<char>(below(256)); break;
        case 1: bytes[at] = marks[below(marks.size())]; break;
        case 2: bytes.erase(at, below(40)); break;
        default: bytes.insert(at, bytes.substr(below(bytes.size()), below(40)));
        }
    }
}

} // namespace

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
            spoil(bytes = whole, random);
        }
    }
    return inputs.empty() ? 1 : 0;
}

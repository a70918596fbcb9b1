#include "fuzz/target.h"
#include "tests/columns/session.h"

/// A session of keys: the engine and plain loops agree after each.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tarvik;
    GTEST_FLAG_SET(throw_on_failure, true); // a difference ends the target
    fuzz::Choices choices(fuzz::bytes_of_input(data, size));
    test::Session session([&choices](std::size_t below) { return choices.below(below); });
    std::string keys;
    constexpr int most_keys = 30;
    for (int key = 0; key < most_keys && !choices.ended(); ++key) {
        keys += session.step() + " ";
        session.compare(keys);
    }
    return 0;
}

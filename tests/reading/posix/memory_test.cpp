#include "platform/program_start.h"
#include "tests/reading/reading_desk.h"
#include "tests/support/posix/peak_memory.h"

namespace tarvik::test {
namespace {

// Two reports of different lengths by turns left holes between them, which piled up over a day's work.
TEST_F(ReadingDesk, opening_by_turns_holds_no_more_than_the_first_openings)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "their allocators keep what goes";
#endif
    start_program(0, nullptr);
    const auto report = [](std::size_t lines) {
        std::string text;
        for (std::size_t line = 0; line < lines; ++line) text += std::to_string(line) + "\t\xB1\xA8\xB1\xED\tRMA\r\n";
        return text;
    };
    const std::string reports[] = {report(260'000), report(310'000)};
    const auto turns = [&](int count) {
        for (int turn = 0; turn < count; ++turn) {
            open(reports[turn % 2]);
            form1.query_box().set_text(number_text(turn));
            press(1);
        }
    };
    turns(6);
    const PeakMemory memory;
    turns(40);
    EXPECT_LT(memory.taken(), 60U << 20U);
}

} // namespace
} // namespace tarvik::test

#include "tests/columns/session.h"

#include <random>

namespace tarvik::test {
namespace {

TEST(ColumnEngine, equals_a_slow_one_in_random_sessions)
{
    for (unsigned seed = 1; seed <= 100 && !testing::Test::HasFatalFailure(); ++seed) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        Session session([&random](std::size_t below) { return random() % below; });
        std::string keys;
        for (int i = 0; i < 60 && !testing::Test::HasFatalFailure(); ++i) {
            keys += session.step() + " ";
            session.compare(keys);
        }
    }
}

} // namespace
} // namespace tarvik::test

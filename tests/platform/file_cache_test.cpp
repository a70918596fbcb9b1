#include "platform/files/file_cache.h"

#include <gtest/gtest.h>

namespace tarvik {
namespace {

constexpr FileStamp settled{5, 100, 100, 7, true};

TEST(FileCache, makes_contents_again_when_their_file_may_have_changed)
{
    struct Case {
        const char* name;
        FileStamp before, after;
        bool again;
    };
    const Case cases[] = {
        {"unchanged", settled, settled, false},
        {"of another size", settled, {6, 100, 100, 7, true}, true},
        {"changed later", settled, {5, 101, 101, 7, true}, true},
        {"changed, and its time set back", settled, {5, 100, 101, 7, true}, true},
        {"another file of that name", settled, {5, 100, 100, 8, true}, true},
        {"not settled when it was read", {5, 100, 100, 7, false}, settled, true},
        {"never settled", {5, 100, 100, 7, false}, {5, 100, 100, 7, false}, true},
    };
    for (const Case& one : cases) {
        FileCache<int> cache;
        EXPECT_EQ(cache.get(U"a", one.before, [] { return 1; }), 1) << one.name;
        EXPECT_EQ(cache.get(U"a", one.after, [] { return 2; }), one.again ? 2 : 1) << one.name;
        EXPECT_EQ(cache.get(U"b", one.after, [] { return 3; }), 3) << one.name;
    }
}

} // namespace
} // namespace tarvik

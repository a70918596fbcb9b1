#include "platform/files/file_cache.h"
#include "platform/files/file_name.h"
#include "platform/system_clock.h"

#include <gtest/gtest.h>

namespace tarvik::test {
namespace {

TEST(FileName, stays_inside_its_folder)
{
    EXPECT_EQ(safe_name_part(U"../a\\b:c*?\"<>|\t"), U".._a_b_c_______");
    EXPECT_EQ(safe_name_part(U""), U"");
    EXPECT_EQ(safe_file_name(U"..\\..\\x"), U".._.._x");
    for (const TextView name : {U"", U".", U".."}) EXPECT_EQ(safe_file_name(name), U"_");
    EXPECT_EQ(safe_file_name(U" 甲 乙.x"), U" 甲 乙.x");
}

TEST(CalendarText, pads_all_but_the_hour)
{
    EXPECT_EQ(time_of_day({2024, 3, 1, 9, 5, 7}), U"9:05:07");
    EXPECT_EQ(time_of_day({2024, 3, 1, 0, 0, 0}), U"0:00:00");
    EXPECT_EQ(date_text({2024, 3, 1, 9, 5, 7}), U"2024-03-01");
    EXPECT_EQ(date_text({2024, 12, 31, 23, 59, 59}), U"2024-12-31");
    const CalendarTime now = SystemClock().now();
    EXPECT_TRUE(now.year > 2020 && now.month >= 1 && now.month <= 12 && now.day >= 1 && now.day <= 31);
}

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
} // namespace tarvik::test

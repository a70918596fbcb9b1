#include "office/packages/package_cache.h"
#include "tests/support/packages.h"
#include "tests/support/test_program.h"

#include <chrono>
#include <random>

#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

using ooxml::Package;
using ooxml::PartChanges;

/// Bytes that no packing makes smaller.
std::string noise(std::size_t size)
{
    std::mt19937 random(11);
    std::string bytes(size, '\0');
    for (auto& byte : bytes) byte = static_cast<char>(random());
    return bytes;
}

/// What changes lies behind a part that is larger than all others together.
const Parts picture_ahead{{"a/picture.png", noise(200'000)}, {"b/text.xml", "<a/>"}, {"c/text.xml", "<b/>"}};

Parts with_part(Parts parts, const std::string& name, const std::string& contents)
{
    for (auto& part : parts) {
        if (part.first == name) part.second = contents;
    }
    return parts;
}

} // namespace

TEST(Package, changes_behind_a_large_part_leave_its_own_bytes_alone)
{
    for (const bool compressed : {true, false}) {
        const auto bytes = make_package(picture_ahead, compressed);
        const Package package(bytes);
        for (const auto* text : {"<once/>", "<twice/>"}) {
            const auto changed = package.with({{{"c/text.xml", text}}, {}});
            EXPECT_EQ(parts_of(changed), with_part(picture_ahead, "c/text.xml", text));
            EXPECT_EQ(package.bytes(), bytes);
            EXPECT_EQ(package.part("b/text.xml"), "<a/>");
            const auto again = Package(changed).with({{{"b/text.xml", text}}, {}});
            EXPECT_EQ(parts_of(again).at(1).second, text);
        }
        EXPECT_EQ(package.part("a/picture.png"), picture_ahead.front().second);
    }
}

TEST(PackageCache, a_kept_package_is_whole_after_any_number_of_saves)
{
    TemporaryFolder folder;
    folder.write("t.xlsx", make_package(picture_ahead));
    const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::filesystem::last_write_time(folder.path() / "t.xlsx", old);
    DiskFiles files(folder.path());
    ooxml::PackageCache cache(files);
    std::shared_ptr<const Package> first = cache.open(U"t.xlsx");
    for (int i = 0; i < 3; ++i) {
        const auto package = cache.open(U"t.xlsx");
        EXPECT_EQ(package, first);
        const auto text = "<n" + std::to_string(i) + "/>";
        const auto saved = package->with({{{"c/text.xml", text}}, {"b/text.xml"}});
        EXPECT_EQ(parts_of(saved), (Parts{picture_ahead[0], {"c/text.xml", text}}));
    }
}

} // namespace tarvik::test

#include "engines/packages/package_editor.h"
#include "tests/support/failure_of.h"
#include "tests/support/packages.h"
#include "tests/support/posix/peak_memory.h"

#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

using namespace ooxml;

constexpr std::size_t megabyte = 1U << 20U;
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t most_taken = 800 * megabyte; // what is freed stays for a while, and each block has a margin
#else
constexpr std::size_t most_taken = 110 * megabyte;
#endif

/// Opens the package and every part of it as the engines do; gives why not.
std::string refusal(const std::string& bytes, const Parts& parts)
{
    return failure_of([&] {
        const Package package(bytes);
        std::vector<std::unique_ptr<XmlPart>> trees;
        for (const auto& part : parts)
            trees.push_back(std::make_unique<XmlPart>(part.first, package.part(part.first), "a"));
    });
}

void put_number(std::string& bytes, std::size_t at, std::size_t number)
{
    for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(number >> 8 * i);
}

/// Of a package of one part: both places that tell how large it is tell this.
std::string telling_size(std::string package, std::size_t size)
{
    put_number(package, 22, size);
    put_number(package, package.find("PK\1\2") + 24, size);
    return package;
}

} // namespace

TEST(HostilePackage, takes_some_hundred_megabytes_at_most_whatever_it_holds)
{
    struct Case {
        std::string_view piece;
        std::size_t most; // pieces that just pass
    };
    const Case cases[] = {{"<b/> ", 340'000},     {"<b/>", 570'000},       {"<b></b>", 480'000},
                          {"<b c=''/>", 360'000}, {"x", 15'900'000},       {"<b>&#x4e00;</b>", 270'000},
                          {"<!---->", 490'000},   {"<b><c/></b>", 250'000}};
    for (const auto& one : cases) {
        for (const bool passes : {true, false}) {
            const Parts parts{{"a.xml", "<a>" + repeated(one.piece, passes ? one.most : one.most * 3 / 2) + "</a>"}};
            const std::string bytes = make_package(parts);
            ASSERT_LT(bytes.size(), 200'000U) << one.piece;
            const PeakMemory memory;
            EXPECT_EQ(refusal(bytes, parts), passes ? "no failure" : "部件“a.xml”展开后过大。") << one.piece;
            EXPECT_LT(memory.taken(), most_taken) << one.piece;
        }
    }
}

TEST(HostilePackage, sizes_that_lie_are_found_out)
{
    const Parts parts{{"a.xml", "<a>" + std::string(200 * megabyte, ' ') + "</a>"}};
    const std::string bytes = make_package(parts);
    for (const std::size_t told : {std::size_t{10}, 10 * megabyte, std::size_t{0xfffffffe}}) {
        const std::string lying = telling_size(bytes, told);
        const PeakMemory memory;
        EXPECT_EQ(refusal(lying, parts), told > 100 * megabyte ? "部件“a.xml”展开后过大。" : "部件“a.xml”已损坏。");
        EXPECT_LT(memory.taken(), 60 * megabyte);
    }
}

TEST(HostilePackage, parts_are_bounded_together_and_in_number)
{
    Parts parts;
    for (int i = 0; i < 20; ++i)
        parts.emplace_back("part" + std::to_string(i) + ".xml", "<a>" + repeated("<b/> ", 60'000) + "</a>");
    const PeakMemory memory;
    EXPECT_EQ(refusal(make_package(parts), parts), "部件“part6.xml”展开后过大。");
    EXPECT_LT(memory.taken(), most_taken);

    parts.clear();
    for (int i = 0; i < 66'000; ++i) parts.emplace_back("p" + std::to_string(i), "");
    EXPECT_EQ(refusal(make_package(parts), {}), "压缩包里的部件过多。");
    parts.resize(60'000);
    parts.emplace_back("a.xml", "<a/>");
    EXPECT_EQ(refusal(make_package(parts), {{"a.xml", ""}}), "no failure");
}

TEST(HostilePackage, names_that_point_outside_stay_names)
{
    const Parts parts{{"_rels/.rels", "<Relationships><Relationship Id=\"a\" Type=\"x/y\" Target=\"../../etc/hosts\"/>"
                                      "<Relationship Id=\"b\" Type=\"x/y\" Target=\"file:///etc/hosts\"/>"
                                      "<Relationship Id=\"c\" Type=\"x/z\" Target=\"/../..\"/></Relationships>"},
                      {"../../etc/hosts", "1"},
                      {"/abs", "2"},
                      {"c:\\windows\\x", "3"},
                      {"a.xml", "<a/>"}};
    const Package package(make_package(parts));
    const Relationships relationships(package, "");
    EXPECT_EQ(relationships.of_kind("y")->target, "etc/hosts");
    EXPECT_FALSE(package.has("etc/hosts"));
    EXPECT_FALSE(package.has(relationships.of_id("b")->target));
    EXPECT_EQ(relationships.of_kind("z")->target, "");
    auto expected = parts;
    expected.back().second = "<a>1</a>";
    EXPECT_EQ(parts_of(package.with({{{"a.xml", "<a>1</a>"}}, {}})), expected);
}

// With all ids compared for each one that is taken this would take hours.
TEST(HostilePackage, a_free_id_is_found_among_very_many)
{
    std::string taken;
    for (int i = 1; i <= 150'000; ++i)
        taken += "<Relationship Id=\"rId" + std::to_string(i) + "\" TargetMode=\"External\"/>";
    const Package package(make_package({{"_rels/.rels", "<Relationships>" + taken + "</Relationships>"}}));
    Relationships relationships(package, "");
    EXPECT_EQ(relationships.add("x", "y"), "rId150001");
    EXPECT_EQ(relationships.add("x", "z"), "rId150002");
}

TEST(HostilePackage, entities_are_not_expanded)
{
    std::string laughs = "<!DOCTYPE a [<!ENTITY l0 \"ha\">";
    for (int i = 1; i < 30; ++i)
        laughs += "<!ENTITY l" + std::to_string(i) + " \"" + repeated("&l" + std::to_string(i - 1) + ";", 10) + "\">";
    const Parts parts{{"a.xml", laughs + "]><a>&l29;</a>"}};
    EXPECT_EQ(refusal(make_package(parts), parts), "部件“a.xml”已损坏。");
    EXPECT_EQ(unescaped("&l29;&lt;&#x110000;&#xd800;&#99999999999;"), "&l29;<\uFFFD\uFFFD&#99999999999;");
}

} // namespace tarvik::test

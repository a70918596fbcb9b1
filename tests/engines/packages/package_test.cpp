#include "engines/packages/package.h"
#include "engines/packages/package_editor.h"
#include "tests/support/compound_files.h"
#include "tests/support/failure_of.h"
#include "tests/support/packages.h"
#include "tests/support/test_program.h"

#include <random>
#include <thread>

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

} // namespace

TEST(Package, bytes_that_are_none_are_refused_with_what_they_are)
{
    const auto old_workbook = file_with_stream("Workbook");
    const struct {
        std::string bytes, reason;
    } cases[] = {
        {"", "文件是空的。"},
        {"客户\t1\r\n", "文件不是 .xlsx、.docx 一类的文件。"},
        {"PK", "文件不是 .xlsx、.docx 一类的文件。"},
        {file_with_stream("EncryptedPackage"), "文件设有打开密码，请先去掉密码。"},
        {old_workbook, "这是旧格式（.xls）的工作簿，内置引擎不能处理，请另存为 .xlsx。"},
        {file_with_stream("WordDocument"), "这是旧格式（.doc）的文档，内置引擎不能处理，请另存为 .docx。"},
        {old_workbook.substr(0, old_workbook.size() / 2), "文件不完整或已损坏。"},
        {file_with_stream("Something"), "文件不是 .xlsx、.docx 一类的文件。"},
    };
    for (const auto& one : cases) EXPECT_EQ(failure_of([&] { const Package package(one.bytes); }), one.reason);
}

TEST(Package, changes_behind_a_large_part_leave_its_own_bytes_alone)
{
    for (const bool compressed : {true, false}) {
        const auto bytes = make_package(picture_ahead, compressed);
        const Package package(bytes);
        for (const auto* text : {"<once/>", "<twice/>"}) {
            const auto changed = package.with({{{"c/text.xml", text}}, {}});
            auto expected = picture_ahead;
            set_part(expected, "c/text.xml", text);
            EXPECT_EQ(parts_of(changed), expected);
            EXPECT_EQ(package.bytes(), bytes);
            EXPECT_EQ(package.part("b/text.xml"), "<a/>");
            const auto again = Package(changed).with({{{"b/text.xml", text}}, {}});
            EXPECT_EQ(parts_of(again).at(1).second, text);
        }
        EXPECT_EQ(package.part("a/picture.png"), picture_ahead.front().second);
    }
}

TEST(Package, a_part_can_be_added_while_the_first_one_goes)
{
    const Package package(make_package(picture_ahead));
    EXPECT_EQ(parts_of(package.with({{{"d.xml", "<d/>"}}, {"a/picture.png"}})),
              (Parts{picture_ahead[1], picture_ahead[2], {"d.xml", "<d/>"}}));
}

TEST(Relationships, those_of_a_damaged_package_that_share_an_id_go_one_by_one)
{
    const std::string kept = "<Relationship Id=\"a\" Type=\"x/styles\" Target=\"s.xml\"/>";
    const std::string outside = "<Relationship Id=\"a\" Type=\"x/chain\" Target=\"c.xml\" TargetMode=\"External\"/>";
    const std::string gone = "<Relationship Id=\"a\" Type=\"x/chain\" Target=\"c.xml\"/>";
    const Package package(
        make_package({{"_rels/.rels", "<Relationships>" + gone + outside + kept + "</Relationships>"}}));
    ooxml::Relationships relationships(package, "");
    relationships.remove_if([](const ooxml::Relationship& one) { return one.kind() == "chain"; });
    ASSERT_EQ(relationships.all().size(), 1U);
    EXPECT_EQ(relationships.all().front().kind(), "styles");
    EXPECT_EQ(relationships.part()->print(), "<Relationships>" + outside + kept + "</Relationships>");
}

TEST(PackageEditor, adds_parts_with_what_the_package_must_say_of_them)
{
    const std::string types = "<Types><Default Extension=\"xml\" ContentType=\"application/xml\"/>"
                              "<Override PartName=\"/word/d.xml\" ContentType=\"d\"/></Types>";
    const std::string relation = "<Relationship Id=\"rId2\" Type=\"a/b/officeDocument\" Target=\"word/d.xml\"/>";
    const Parts parts{{"[Content_Types].xml", types},
                      {"_rels/.rels", "<Relationships>" + relation + "</Relationships>"},
                      {"word/d.xml", "<d/>"},
                      {"word/media/image1.png", "old"}};
    ooxml::PackageEditor editor(std::make_shared<const Package>(make_package(parts)));
    ooxml::Relationships of_document(editor.original(), "word/d.xml");
    for (const auto* contents : {"one", "two"}) {
        const auto name = editor.free_name("word/media/image", ".png");
        editor.add(name, contents, "image/png");
        of_document.add("a/b/image", name);
    }
    editor.add("custom/x.xml", "<x/>", "x");
    of_document.add("x", "custom/x.xml");
    editor.write(of_document);

    auto expected = parts;
    expected[0].second = "<Types><Default Extension=\"rels\" "
                         "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>"
                         "<Default Extension=\"png\" ContentType=\"image/png\"/>" +
                         types.substr(types.find("<Default"), types.find("</") - types.find("<Default")) +
                         "<Override PartName=\"/custom/x.xml\" ContentType=\"x\"/></Types>";
    expected.insert(expected.end(),
                    {{"custom/x.xml", "<x/>"},
                     {"word/_rels/d.xml.rels",
                      "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n"
                      "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
                      "<Relationship Id=\"rId1\" Type=\"a/b/image\" Target=\"media/image2.png\"/>"
                      "<Relationship Id=\"rId2\" Type=\"a/b/image\" Target=\"media/image3.png\"/>"
                      "<Relationship Id=\"rId3\" Type=\"x\" Target=\"/custom/x.xml\"/></Relationships>"},
                     {"word/media/image2.png", "one"},
                     {"word/media/image3.png", "two"}});
    const auto bytes = editor.pack();
    EXPECT_EQ(parts_of(bytes), expected);

    // The next one to edit it finds all that, and can take it away again.
    ooxml::PackageEditor next(std::make_shared<const Package>(bytes));
    ooxml::Relationships again(next.original(), "word/d.xml");
    ASSERT_NE(again.of_id("rId3"), nullptr);
    EXPECT_EQ(again.of_id("rId3")->target, "custom/x.xml");
    again.remove_if([](const auto& one) { return one.id == "rId2"; });
    EXPECT_EQ(again.add("y", "word/media/image1.png"), "rId4");
    next.remove("word/media/image3.png");
    next.remove("custom/x.xml");
    EXPECT_FALSE(next.has("custom/x.xml"));
    next.write(again);
    const auto left = parts_of(next.pack());
    ASSERT_EQ(left.size(), expected.size() - 2);
    EXPECT_EQ(left.front().second.find("custom"), std::string::npos);
    EXPECT_NE(left[4].second.find("<Relationship Id=\"rId4\" Type=\"y\" Target=\"media/image1.png\"/>"),
              std::string::npos);
}

TEST(PackageCache, a_file_beyond_all_measure_is_not_read)
{
    TemporaryFolder folder;
    folder.write("t.xlsx", make_package(picture_ahead));
    std::filesystem::resize_file(folder.path() / "t.xlsx", 1U << 30U);
    Files files(folder.path());
    ooxml::PackageCache cache(files);
    EXPECT_EQ(failure_of([&] { cache.open(U"t.xlsx"); }), "文件过大。");
}

TEST(PackageCache, reads_a_package_once_as_long_as_its_file_stays)
{
    TemporaryFolder folder;
    FaultyFiles watcher;
    Files files(Files(folder.path()), watcher);
    ooxml::PackageCache cache(files);
    const auto operations = [&](TextView path) {
        watcher.fail_at(0);
        (void)cache.open(path);
        return watcher.counted();
    };
    folder.write("small.xlsx", make_package({{"a.xml", "<a/>"}}));
    folder.write("large.xlsx", make_package({{"a.png", noise(5U << 20U)}}));
    while (!files.stamp(U"large.xlsx").settled) std::this_thread::yield();
    constexpr std::size_t looked_at = 1, read = 2;
    EXPECT_EQ(operations(U"small.xlsx"), read);
    EXPECT_EQ(operations(U"small.xlsx"), looked_at);
    EXPECT_EQ(cache.open(U"small.xlsx"), cache.open(U"small.xlsx"));
    EXPECT_EQ(operations(U"large.xlsx"), read);
    EXPECT_EQ(operations(U"large.xlsx"), read) << "it would take the memory of many templates";
    folder.write("small.xlsx", make_package({{"a.xml", "<b/>"}}));
    EXPECT_EQ(operations(U"small.xlsx"), read);
    EXPECT_EQ(cache.open(U"small.xlsx")->part("a.xml"), "<b/>");
}

} // namespace tarvik::test

#include "engines/documents/engine.h"
#include "tests/engines/documents/document_parts.h"

#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

std::string failure_of_opening(const std::string& bytes)
{
    DocumentFile file(bytes);
    const auto told = failure_of([&] { file.open().set_cell_text(1, 1, U"新"); });
    EXPECT_EQ(file.folder.read("t.doc"), bytes);
    const std::string beginning = "无法处理文档“t.doc”：";
    return told.starts_with(beginning) ? told.substr(beginning.size()) : told;
}

std::string nested(int depth, const std::string& name, const std::string& contents)
{
    std::string all;
    for (int i = 0; i < depth; ++i) all += "<" + name + ">";
    all += contents;
    for (int i = 0; i < depth; ++i) all += "</" + name + ">";
    return all;
}

} // namespace

TEST(BadDocument, is_a_failure_that_tells_file_and_reason)
{
    const auto package = make_package(document_parts(plain_table(1, 1)));
    const auto changed = [](const std::string& part, const std::string& from, const std::string& to) {
        auto parts = document_parts(plain_table(1, 1));
        edit_part(parts, part, from, to);
        return make_package(parts);
    };
    struct Case {
        std::string bytes;
        std::string reason;
    };
    const Case cases[] = {
        {package.substr(0, package.size() / 2), "文件已损坏或不完整。"},
        {changed("[Content_Types].xml", "wordprocessingml.document", "spreadsheetml.sheet"), "文件不是 Word 文档。"},
        {changed("_rels/.rels", "officeDocument\"", "other\""), "文件不是 Word 文档。"},
        {changed("_rels/.rels", "document.xml", "fehlt.xml"), "文件不是 Word 文档。"},
        {changed(main_part, "</w:tbl>", ""), "部件“word/document.xml”已损坏。"},
        {changed(main_part, "w:document ", "w:documents "), "部件“word/document.xml”已损坏。"},
        {changed(main_part, "<w:tbl>", "<!--\xE4\xB8-->\n<w:tbl>"), "部件“word/document.xml”已损坏。"},
        {make_package(document_parts(paragraph("a"))), "文档里没有表格。"},
        {make_package(document_parts(table(""))), "文档的第一个表格没有第 1 行第 1 列的单元格。"},
        {make_package(document_parts(table(row(cell(nested(200'000, "w:sdt", "")))))), "部件里的元素嵌套过深。"},
    };
    for (const auto& one : cases) EXPECT_EQ(failure_of_opening(one.bytes), one.reason);
    DocumentFile file(package);
    EXPECT_NE(failure_of([&] { file.open(U"fehlt.doc"); }), "no failure");
}

TEST(BadDocument, stays_as_it_was_when_a_cell_cannot_be_emptied)
{
    const auto row_of = [](const std::string& contents) { return table(row(cell(paragraph("留") + contents))); };
    DocumentFile file(document_parts(row_of(nested(200, "w:sdt", "<w:p/>"))));
    file.folder.write("p.jpg", jpeg(9, 9));
    auto& document = file.open();
    const std::string told = "无法处理文档“t.doc”：部件里的元素嵌套过深。";
    EXPECT_EQ(failure_of([&] { document.set_cell_text(1, 1, U"新"); }), told);
    EXPECT_EQ(failure_of([&] { document.add_picture(1, 1, U"p.jpg"); }), told);
    document.save_as(U"neu.doc");
    EXPECT_EQ(file.folder.read("neu.doc"), file.folder.read("t.doc"));
}

TEST(BadDocument, finds_its_table_in_whatever_depth)
{
    DocumentFile file(document_parts(nested(200'000, "w:sdt", plain_table(1, 1))));
    EXPECT_EQ(texts_of(file.document_with(1, 1, U"新")), std::vector<std::string>{"新"});
}

// Documents and pictures in which little is written and much is meant. Each would take minutes if the work grew with
// the square of what they hold.

TEST(HostileDocument, numbers_of_drawings_are_sought_once_in_each_part)
{
    auto parts = document_parts(paragraph(repeated("docPr ", 300'000)) + plain_table(1, 1));
    set_part(parts, "word/header.xml", "<w:hdr>" + std::string(3'000'000, ' ') + "<wp:docPr id=\"1\"/></w:hdr>");
    std::string links;
    for (int i = 0; i < 20'000; ++i)
        links += "<Relationship Id=\"h" + std::to_string(i) + "\" Type=\"a/header\" Target=\"header.xml\"/>";
    set_part(parts, "word/_rels/document.xml.rels", "<Relationships>" + links + "</Relationships>");
    ooxml::DocumentModel model(std::make_shared<const ooxml::Package>(make_package(parts)));
    const auto picture = png(2, 2);
    model.add_picture(1, 1, {picture, ooxml::read_picture(picture)}, U"p.png");
    EXPECT_NE(part_of(model.pack(), main_part).find("docPr id=\"2\""), std::string::npos);
}

TEST(HostileDocument, camera_notes_of_a_picture_are_no_longer_than_their_segment)
{
    // Each segment tells of 65,535 entries and holds none.
    const std::string notes = std::string("Exif\0\0II*\0\10\0\0\0\xFF\xFF", 16);
    const std::string segment = "\xFF\xE1" + big_endian(static_cast<unsigned>(notes.size() + 2), 2) + notes;
    std::string picture = jpeg(9, 9);
    picture.insert(2, repeated(segment, 500'000));
    EXPECT_EQ(ooxml::read_picture(picture).kind, ooxml::PictureKind::Jpeg);
}

} // namespace tarvik::test

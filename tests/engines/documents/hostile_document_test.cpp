#include "engines/documents/document_model.h"
#include "tests/engines/documents/document_parts.h"

#include <gtest/gtest.h>

/// Documents and pictures in which little is written and much is meant. Each would take minutes if the work grew with
/// the square of what they hold.
namespace tarvik::test {

using namespace ooxml;

TEST(HostileDocument, numbers_of_drawings_are_sought_once_in_each_part)
{
    auto parts = document_parts(paragraph(repeated("docPr ", 300'000)) + plain_table(1, 1));
    set_part(parts, "word/header.xml", "<w:hdr>" + std::string(3'000'000, ' ') + "<wp:docPr id=\"1\"/></w:hdr>");
    std::string links;
    for (int i = 0; i < 20'000; ++i)
        links += "<Relationship Id=\"h" + std::to_string(i) + "\" Type=\"a/header\" Target=\"header.xml\"/>";
    set_part(parts, "word/_rels/document.xml.rels", "<Relationships>" + links + "</Relationships>");
    DocumentModel model(std::make_shared<const Package>(make_package(parts)));
    const auto picture = png(2, 2);
    model.add_picture(1, 1, {picture, read_picture(picture)}, U"p.png");
    EXPECT_NE(part_of(model.pack(), main_part).find("docPr id=\"2\""), std::string::npos);
}

TEST(HostileDocument, camera_notes_of_a_picture_are_no_longer_than_their_segment)
{
    // Each segment tells of 65,535 entries and holds none.
    const std::string notes = std::string("Exif\0\0II*\0\10\0\0\0\xFF\xFF", 16);
    const std::string segment = "\xFF\xE1" + big_endian(static_cast<unsigned>(notes.size() + 2), 2) + notes;
    std::string picture = jpeg(9, 9);
    picture.insert(2, repeated(segment, 500'000));
    EXPECT_EQ(read_picture(picture).kind, PictureKind::Jpeg);
}

} // namespace tarvik::test

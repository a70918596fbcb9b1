#include "tests/engines/documents/document_parts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

const std::string drawing_run = "<w:r><w:rPr><w:noProof/></w:rPr><w:drawing><wp:inline";
const std::string single = "<w:spacing w:line=\"240\" w:lineRule=\"auto\"/>";

// The values of an attribute that stands somewhere behind `from`, in order.
std::vector<std::string> values_behind(const std::string& document, const std::string& from)
{
    std::vector<std::string> values;
    for (auto at = document.find(from); at != std::string::npos; at = document.find(from, at + 1)) {
        const auto start = at + from.size();
        values.push_back(document.substr(start, document.find_first_of("/>", start) - start));
    }
    return values;
}

// What the drawing of a picture in this cell tells of its size.
std::string extent_in(const Parts& parts, const std::string& picture, int row = 1, int column = 1)
{
    DocumentFile file(parts);
    file.folder.write("p.jpg", picture);
    const auto document = file.document_after([&](TextDocument& opened) { opened.add_picture(row, column, U"p.jpg"); });
    return values_behind(document, "<wp:extent ").at(0);
}

std::string extent(int width, int height)
{
    return "cx=\"" + std::to_string(width) + "\" cy=\"" + std::to_string(height) + "\"";
}

std::string failure_of_picture(const std::string& picture, const std::string& name = "p.jpg")
{
    DocumentFile file(document_parts(plain_table(1, 1)));
    file.folder.write("p.jpg", picture);
    auto& document = file.open();
    const auto told = failure_of([&] { document.add_picture(1, 1, from_utf8(name)); });
    document.save_as(U"neu.doc");
    EXPECT_EQ(file.folder.read("neu.doc"), file.folder.read("t.doc"));
    const std::string beginning = "无法处理图片“p.jpg”：";
    return told.starts_with(beginning) ? told.substr(beginning.size()) : told;
}

} // namespace

TEST(Picture, becomes_a_part_with_all_that_the_package_must_say_of_it)
{
    const auto parts = document_parts(plain_table(2, 2));
    DocumentFile file(parts);
    file.folder.write("甲&乙.jpg", jpeg(96, 48));
    file.folder.write("p.jpg", png(10, 10));
    const auto document = file.document_after([](TextDocument& opened) {
        opened.add_picture(2, 1, U"甲&乙.jpg");
        opened.add_picture(1, 2, U"p.jpg");
        opened.add_picture(1, 2, U"p.jpg");
    });
    const auto saved = file.folder.read("neu.doc");
    EXPECT_EQ(part_of(saved, "word/media/image1.jpeg"), jpeg(96, 48));
    EXPECT_EQ(part_of(saved, "word/media/image2.png"), png(10, 10));
    EXPECT_EQ(part_of(saved, "word/media/image1.png"), part_of(make_package(parts), "word/media/image1.png"));
    int stored = 0;
    parts_of(saved, &stored);
    EXPECT_EQ(stored, 3); // the pictures
    const auto types = part_of(saved, "[Content_Types].xml");
    EXPECT_THAT(types, testing::HasSubstr("<Default Extension=\"jpeg\" ContentType=\"image/jpeg\"/>"));
    EXPECT_THAT(types, testing::HasSubstr("<Default Extension=\"png\" ContentType=\"image/png\"/>"));
    const auto relationships = part_of(saved, "word/_rels/document.xml.rels");
    const auto embedded = values_behind(document, "r:embed=");
    ASSERT_EQ(embedded.size(), 3U);
    const auto jpeg_id = embedded[2].substr(0, embedded[2].find(' '));
    EXPECT_THAT(relationships, testing::HasSubstr("Id=" + jpeg_id +
                                                  " Type=\"http://schemas.openxmlformats.org/officeDocument/2006/"
                                                  "relationships/image\" Target=\"media/image1.jpeg\""));
    EXPECT_THAT(
        values_behind(document, "<wp:docPr "),
        testing::ElementsAre("id=\"3\" name=\"p.jpg\"", "id=\"4\" name=\"p.jpg\"", "id=\"1\" name=\"甲&amp;乙.jpg\""));
    EXPECT_EQ(values_behind(document, "<wp:extent ").at(2), extent(914'400, 457'200));
}

TEST(Picture, speaks_the_edition_of_the_standard_that_its_document_speaks)
{
    auto parts = document_parts(plain_table(1, 1));
    edit_part(parts, "_rels/.rels", "schemas.openxmlformats.org/officeDocument/2006",
              "purl.oclc.org/ooxml/officeDocument");
    edit_part(parts, main_part, "schemas.openxmlformats.org/wordprocessingml/2006",
              "purl.oclc.org/ooxml/wordprocessingml");
    DocumentFile file(parts);
    file.folder.write("p.jpg", png(4, 4));
    const auto document = file.document_after([](TextDocument& opened) { opened.add_picture(1, 1, U"p.jpg"); });
    EXPECT_THAT(document, testing::HasSubstr("xmlns:pic=\"http://purl.oclc.org/ooxml/drawingml/picture\""));
    EXPECT_THAT(document, testing::Not(testing::HasSubstr("schemas.openxmlformats.org")));
    EXPECT_THAT(part_of(file.folder.read("neu.doc"), "word/_rels/document.xml.rels"),
                testing::HasSubstr("\"http://purl.oclc.org/ooxml/officeDocument/relationships/image\""));
}

TEST(Picture, stands_alone_behind_what_the_cell_holds)
{
    const auto exact = "<w:spacing w:before=\"20\" w:line=\"200\" w:lineRule=\"exact\"/>";
    const auto without_spacing = "<w:pPr><w:numPr/><w:jc w:val=\"center\"/></w:pPr>";
    DocumentFile file(
        document_parts(table(row(cell(std::string("<w:p><w:pPr>") + exact + "</w:pPr><w:r/></w:p><w:p/>") +
                                 cell("<w:p>" + std::string(without_spacing) + "<w:r><w:t>照片</w:t></w:r></w:p>") +
                                 cell(paragraph("照片") + "<w:p/>") + cell(plain_table(1, 1) + "<w:p/>")))));
    file.folder.write("p.jpg", jpeg(9, 9));
    const auto document = file.document_after([](TextDocument& opened) {
        for (int column = 1; column <= 4; ++column) opened.add_picture(1, column, U"p.jpg");
    });
    EXPECT_THAT(document, testing::HasSubstr("<w:pPr><w:spacing w:before=\"20\" w:line=\"240\" w:lineRule=\"auto\"/>"
                                             "</w:pPr><w:r/>" +
                                             drawing_run));
    EXPECT_THAT(document, testing::HasSubstr("<w:t>照片</w:t></w:r></w:p><w:p><w:pPr>" + single +
                                             "<w:jc w:val=\"center\"/></w:pPr>" + drawing_run));
    EXPECT_THAT(document,
                testing::HasSubstr("<w:t>照片</w:t></w:r></w:p><w:p><w:pPr>" + single + "</w:pPr>" + drawing_run));
    EXPECT_THAT(document, testing::HasSubstr("</w:tbl><w:p><w:pPr>" + single + "</w:pPr>" + drawing_run));
}

TEST(Picture, is_made_smaller_to_fit_but_never_larger)
{
    const auto large = jpeg(2000, 1000); // 20.8 by 10.4 inches without a resolution
    const auto of_cell = [&](const std::string& properties, const std::string& of_table = {},
                             const std::string& of_row = {}, const std::string& of_paragraph = {}) {
        const auto first = cell(paragraph("a"));
        const auto second = cell("<w:p><w:pPr>" + of_paragraph + "</w:pPr></w:p>", properties);
        const auto grid =
            "<w:tblGrid><w:gridCol w:w=\"400\"/><w:gridCol w:w=\"720\"/><w:gridCol w:w=\"1296\"/></w:tblGrid>";
        return document_parts("<w:tbl><w:tblPr>" + of_table + "</w:tblPr>" + grid + row(first + second, of_row) +
                              "</w:tbl><w:sectPr><w:pgSz w:w=\"12240\" w:h=\"7200\"/><w:pgMar w:left=\"1440\" "
                              "w:right=\"1440\" w:top=\"1440\" w:bottom=\"1440\"/></w:sectPr>");
    };
    const auto wide = [&](const Parts& parts) { return extent_in(parts, large, 1, 2); };
    const auto margins = "<w:tblCellMar><w:left w:w=\"0\"/><w:right w:w=\"0\"/></w:tblCellMar>";
    // 1656 and 216 twips of margins; then columns of the grid; then half and all of a table 8640 wide.
    EXPECT_EQ(wide(of_cell("<w:tcW w:w=\"1656\" w:type=\"dxa\"/>")), extent(914'400, 457'200));
    EXPECT_EQ(wide(of_cell("<w:tcW w:w=\"0\" w:type=\"auto\"/><w:gridSpan w:val=\"2\"/>", margins)),
              extent(1'280'160, 640'080));
    EXPECT_EQ(wide(of_cell("<w:tcW w:w=\"2500\" w:type=\"pct\"/>",
                           std::string("<w:tblW w:w=\"2880\" w:type=\"dxa\"/>") + margins)),
              extent(914'400, 457'200));
    EXPECT_EQ(
        wide(of_cell("<w:tcW w:w=\"1800\" w:type=\"dxa\"/><w:tcMar><w:start w:w=\"300\"/><w:end w:w=\"10\"/></w:tcMar>",
                     margins, {}, "<w:ind w:left=\"10\" w:right=\"20\" w:firstLine=\"20\"/>")),
        extent(914'400, 457'200));
    // The height of the page's text is 4320 twips, a fixed row is lower.
    EXPECT_EQ(wide(of_cell("<w:tcW w:w=\"90000\" w:type=\"dxa\"/>")), extent(2 * 2'468'880, 2'468'880));
    EXPECT_EQ(
        wide(of_cell("<w:tcW w:w=\"90000\" w:type=\"dxa\"/>", {}, "<w:trHeight w:val=\"720\" w:hRule=\"exact\"/>")),
        extent(914'400, 457'200));
    EXPECT_EQ(extent_in(of_cell("<w:tcW w:w=\"1656\" w:type=\"dxa\"/>"), jpeg(30, 15, {300}), 1, 2),
              extent(91'440, 45'720));
    EXPECT_EQ(extent_in(document_parts(plain_table(1, 1)), png(100, 50, 3937)), extent(914'402, 457'201));
}

TEST(Picture, is_turned_as_the_camera_tells)
{
    struct Case {
        int orientation;
        std::string turn;
    };
    const Case cases[] = {{1, "<a:xfrm><"},
                          {2, "<a:xfrm flipH=\"1\"><"},
                          {3, "<a:xfrm rot=\"10800000\"><"},
                          {4, "<a:xfrm rot=\"10800000\" flipH=\"1\"><"},
                          {5, "<a:xfrm rot=\"16200000\" flipH=\"1\"><"},
                          {6, "<a:xfrm rot=\"5400000\"><"},
                          {7, "<a:xfrm rot=\"5400000\" flipH=\"1\"><"},
                          {8, "<a:xfrm rot=\"16200000\"><"},
                          {9, "<a:xfrm><"}};
    DocumentFile file(document_parts(table(row(cell("<w:p/>", "<w:tcW w:w=\"1656\" w:type=\"dxa\"/>")))));
    for (const auto& [orientation, turn] : cases) {
        for (const bool little : {false, true}) {
            // 2032 points at 508 to the inch are 4 inches.
            file.folder.write("p.jpg", jpeg(2032, 1016, {0, orientation, little}));
            const auto document = file.document_after([](TextDocument& opened) { opened.add_picture(1, 1, U"p.jpg"); });
            EXPECT_THAT(document, testing::HasSubstr(turn));
            const bool lies_across = orientation >= 5 && orientation <= 8;
            // A picture that lies across is shown one inch wide, so it is two inches wide before it is turned.
            EXPECT_EQ(values_behind(document, "<wp:extent ").at(0),
                      lies_across ? extent(1'828'800, 914'400) : extent(914'400, 457'200));
            EXPECT_EQ(values_behind(document, "<wp:effectExtent ").at(0),
                      lies_across ? "l=\"0\" t=\"457200\" r=\"0\" b=\"457200\"" : "l=\"0\" t=\"0\" r=\"0\" b=\"0\"");
        }
    }
}

TEST(Picture, that_is_none_is_one_failure_and_the_document_stays)
{
    const auto with = [](std::string bytes, std::size_t at, const std::string& replacement) {
        return bytes.replace(at, replacement.size(), replacement);
    };
    const auto header = [](const std::string& size_and_kind) {
        return "\x89PNG\r\n\x1A\n" + png_chunk("IHDR", size_and_kind) + png(3, 3).substr(33);
    };
    const auto sound = jpeg(64, 64);
    const std::string damaged = "图片已损坏。";
    const std::string incomplete = "图片不完整。";
    const std::string none = "文件不是 JPEG 或 PNG 图片。";
    struct Case {
        std::string bytes;
        std::string reason;
    };
    const Case cases[] = {
        {"", "文件是空的。"},
        {"GIF89a", none},
        {"照片", none},
        {"\xFF\xD8", none},
        {jpeg(10'000, 10'000).substr(0, 400), "图片过大：宽 10000 点，高 10000 点。"},
        {jpeg(0, 4), damaged},
        {sound.substr(0, sound.size() - 2), incomplete},
        {sound.substr(0, 30), incomplete},
        {with(sound, 20, std::string("\0", 1)), damaged},           // no segment begins behind the first
        {with(sound, sound.find("\xFF\xC0"), "\xFF\xC8"), damaged}, // no frame tells its size
        {with(sound, sound.find("\xFF\xC0") + 5, "\x0F\x0F\x0F\x0F"), incomplete},
        {with(png(3, 3), 20, "\1"), damaged}, // the checksum does not fit
        {header(big_endian(0x7FFF'FFFF, 4) + big_endian(0x7FFF'FFFF, 4) + std::string("\10\0\0\0\0", 5)),
         "图片过大：宽 2147483647 点，高 2147483647 点。"},
        {header("\1"), damaged},
        {png(3, 3).substr(0, 50), incomplete},
        {png(3, 3).substr(0, png(3, 3).size() - 12), incomplete},
        {std::string(png(3, 3)).substr(0, 33) + png_chunk("IDAT", "") + png_chunk("IEND", ""), incomplete},
    };
    for (const auto& one : cases) EXPECT_EQ(failure_of_picture(one.bytes), one.reason) << &one - cases;
    EXPECT_NE(failure_of_picture(sound, "fehlt.jpg"), "no failure");
    EXPECT_EQ(failure_of_picture(std::string((64U << 20U) + 1, '\0')), "文件过大。");
}

} // namespace tarvik::test

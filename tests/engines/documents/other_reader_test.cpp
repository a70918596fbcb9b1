#include "tests/engines/documents/document_parts.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

namespace tarvik::test {

TEST(OtherReader, finds_what_was_written_into_a_document)
{
    const auto run = "<w:p><w:r><w:rPr><w:rFonts w:eastAsia=\"仿宋\"/></w:rPr><w:t>旧</w:t></w:r></w:p>";
    auto parts = document_parts(
        table(row(cell(run) + cell(paragraph("标题"), "<w:gridSpan w:val=\"2\"/>")) +
              row(cell("<w:p/>") + cell("<w:p/>", "<w:tcW w:w=\"1656\" w:type=\"dxa\"/>") + cell(paragraph("留")))) +
        "<w:sectPr/>");
    set_part(parts, "word/styles.xml",
             "<w:styles xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\"/>");
    DocumentFile file(parts);
    file.folder.write("p.jpg", jpeg(2000, 1000));
    file.folder.write("q.jpg", png(96, 96));
    file.document_after([](TextDocument& document) {
        document.set_cell_text(1, 1, U"  检测\r\n        <好>\t𠮷 & ");
        document.set_cell_text(1, 2, U"");
        document.set_cell_text(2, 1, U"00123");
        document.add_picture(2, 2, U"p.jpg");
        document.add_picture(2, 2, U"q.jpg");
    });
    EXPECT_EQ(read_by_python("tests/engines/documents/read_document.py", file.folder.path() / "neu.doc"),
              R"([1, 1, "  检测\n        <好>\t𠮷 & ", ["仿宋"]]
[1, 2, "", []]
[2, 1, "00123", []]
[2, 2, "\n", []]
[2, 3, "留", []]
[914400, 457200, "/word/media/image1.jpeg", "image/jpeg", )" +
                  std::to_string(jpeg(2000, 1000).size()) + "]\n[914400, 914400, \"/word/media/image2.png\", " +
                  "\"image/png\", " + std::to_string(png(96, 96).size()) + "]\n");
}

} // namespace tarvik::test

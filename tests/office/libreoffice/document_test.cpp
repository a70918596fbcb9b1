#include "tests/office/libreoffice/office_fixture.h"

namespace tarvik::test {

namespace {

std::string cell(const std::string& properties, const std::string& text)
{
    return "<w:tc><w:tcPr><w:tcW w:w=\"2000\" w:type=\"dxa\"/>" + properties +
           "</w:tcPr><w:p><w:r><w:rPr><w:b/></w:rPr><w:t>" + text + "</w:t></w:r></w:p></w:tc>";
}

/// Three columns; (1,1) reaches down to (2,1), and in row 3 the first two cells are one.
const std::string table =
    "<w:p><w:r><w:t>标题</w:t></w:r></w:p><w:tbl><w:tblPr><w:tblW w:w=\"6000\" w:type=\"dxa\"/></w:tblPr><w:tblGrid>"
    "<w:gridCol w:w=\"2000\"/><w:gridCol w:w=\"2000\"/><w:gridCol w:w=\"2000\"/></w:tblGrid><w:tr>" +
    cell("<w:vMerge w:val=\"restart\"/>", "a") + cell("", "b") + cell("", "c") + "</w:tr><w:tr>" +
    cell("<w:vMerge/>", "") + cell("", "e") + cell("", "f") + "</w:tr><w:tr>" + cell("<w:gridSpan w:val=\"2\"/>", "g") +
    cell("", "h") + "</w:tr></w:tbl><w:p/>";

} // namespace

class OfficeDocument : public OfficeTest {
protected:
    /// The text of a document as its package holds it, one paragraph or line break after the other.
    std::string text_of(const std::string& name)
    {
        convert(name, "read.txt", "Text");
        return folder.read("read.txt");
    }

    std::unique_ptr<DocumentApplication> application = engines.create_document();
};

TEST_F(OfficeDocument, cells_are_counted_in_their_row_and_keep_their_look)
{
    make_document("t.doc", table);
    auto& document = application->open(U"t.doc");
    document.set_cell_text(1, 1, U"甲\r\n乙\v丙");
    document.set_cell_text(2, 3, U"");
    document.set_cell_text(3, 1, U"  庚  ");
    document.set_cell_text(3, 2, U"辛\x01😀");
    EXPECT_EQ(failure_of([&] { document.set_cell_text(2, 1, U"x"); }),
              "无法处理文档“t.doc”：第一个表格没有第 2 行、第 1 列的单元格。");
    EXPECT_EQ(failure_of([&] { document.set_cell_text(3, 3, U"x"); }),
              "无法处理文档“t.doc”：第一个表格没有第 3 行、第 3 列的单元格。");
    EXPECT_THROW(document.set_cell_text(4, 1, U"x"), Failure);
    EXPECT_THROW(document.set_cell_text(0, 1, U"x"), Failure);
    document.save_as(U"u.doc");
    document.close();
    EXPECT_EQ(folder.read("u.doc").substr(0, 4), "\xd0\xcf\x11\xe0");
    EXPECT_EQ(text_of("u.doc"), "\xEF\xBB\xBF标题\n甲\n乙\n丙\nb\nc\n\ne\n\n  庚  \n辛😀\n\n");
}

} // namespace tarvik::test

#include "engines/packages/package.h"
#include "playback/player.h"
#include "tests/engines/documents/document_parts.h"
#include "tests/engines/libreoffice/office_fixture.h"

#include <cmath>

namespace tarvik::test {

namespace {

std::string bold_cell(const std::string& text, const std::string& properties = {})
{
    return cell("<w:p><w:r><w:rPr><w:b/></w:rPr><w:t>" + text + "</w:t></w:r></w:p>",
                "<w:tcW w:w=\"2000\" w:type=\"dxa\"/>" + properties);
}

/// The part of a document's package that holds its text.
std::string document_in(const std::string& package)
{
    return ooxml::Package(package).part(main_part);
}

/// Three columns; (1,1) reaches down to (2,1), and in row 3 the first two cells are one.
const std::string merged_table =
    paragraph("标题") +
    table(row(bold_cell("a", "<w:vMerge w:val=\"restart\"/>") + bold_cell("b") + bold_cell("c")) +
              row(bold_cell("", "<w:vMerge/>") + bold_cell("e") + bold_cell("f")) +
              row(bold_cell("g", "<w:gridSpan w:val=\"2\"/>") + bold_cell("h")),
          "<w:tblW w:w=\"6000\" w:type=\"dxa\"/>") +
    "<w:p/>";

} // namespace

class OfficeDocument : public OfficeTest {
protected:
    /// One paragraph or line break after the other.
    std::string text_of(const std::string& name)
    {
        convert(name, "read.txt", "Text");
        return folder.read("read.txt");
    }

    std::string xml_of(const std::string& name)
    {
        convert(name, "read.docx", "MS Word 2007 XML");
        return document_in(folder.read("read.docx"));
    }

    std::unique_ptr<DocumentApplication> application = engines.create_document();
};

TEST_F(OfficeDocument, cells_are_counted_in_their_row_and_keep_their_look)
{
    make_document("t.doc", merged_table);
    auto& document = application->open(U"t.doc");
    document.set_cell_text(1, 1, U"甲\r\n乙\v丙");
    document.set_cell_text(2, 3, U"");
    document.set_cell_text(3, 1, U"  庚  ");
    document.set_cell_text(3, 2, U"辛\x01😀");
    EXPECT_EQ(failure_of([&] { document.set_cell_text(2, 1, U"x"); }),
              "无法处理文档“t.doc”：第一个表格没有第 2 行、第 1 列的单元格。");
    for (const auto& [row, column] : {std::pair(3, 3), {4, 1}, {0, 1}, {1, 0}})
        EXPECT_THROW(document.set_cell_text(row, column, U"x"), Failure);
    document.save_as(U"u.doc");
    EXPECT_EQ(folder.read("u.doc").substr(0, 4), "\xd0\xcf\x11\xe0");
    EXPECT_EQ(text_of("u.doc"), "\xEF\xBB\xBF标题\n甲\n乙\n丙\nb\nc\n\ne\n\n  庚  \n辛😀\n\n");
    const auto xml = xml_of("u.doc");
    const auto run = xml.substr(xml.rfind("<w:r>", xml.find("辛")), 200);
    EXPECT_NE(run.find("<w:b/>"), std::string::npos) << run;
}

TEST_F(OfficeDocument, a_picture_fits_into_its_cell)
{
    make_document("t.doc", merged_table);
    folder.write("宽.png", png(4'000, 1'000, 3'937));
    folder.write("小.png", png(40, 20, 3'937));
    auto& document = application->open(U"t.doc");
    document.add_picture(1, 2, U"宽.png");
    document.add_picture(3, 1, U"小.png");
    EXPECT_THROW(document.add_picture(2, 1, U"小.png"), Failure);
    document.save_as(U"u.doc");
    const auto xml = xml_of("u.doc");
    std::vector<std::pair<double, double>> sizes; // millimetres
    for (auto at = xml.find("<wp:extent cx=\""); at != std::string::npos; at = xml.find("<wp:extent cx=\"", at + 1)) {
        const auto height = xml.find("cy=\"", at);
        sizes.emplace_back(std::stod(xml.substr(at + 15)) / 36'000, std::stod(xml.substr(height + 4)) / 36'000);
    }
    ASSERT_EQ(sizes.size(), 2U);
    EXPECT_LE(sizes[0].first, 35.3); // the cell's 2,000 twips
    EXPECT_GT(sizes[0].first, 28);
    EXPECT_NEAR(sizes[0].first / sizes[0].second, 4, 0.1);
    EXPECT_NEAR(sizes[1].first, 10.16, 0.2);
    EXPECT_NEAR(sizes[1].second, 5.08, 0.2);
    EXPECT_LT(xml.find(">g<"), xml.rfind("<wp:extent"));
}

TEST_F(OfficeDocument, contents_decide_the_format_and_a_document_without_a_table_is_told)
{
    make_document("t.doc", paragraph("没有表格"));
    auto& document = application->open(U"t.doc");
    EXPECT_EQ(failure_of([&] { document.set_cell_text(1, 1, U"x"); }), "无法处理文档“t.doc”：文档中没有表格。");
    folder.write("包.doc", make_package(document_parts(merged_table)));
    auto& package = application->open(U"包.doc");
    package.set_cell_text(1, 1, U"新");
    package.save_as(U"新.doc");
    EXPECT_NE(document_in(folder.read("新.doc")).find("新"), std::string::npos);
    folder.write("坏.doc", "PK\x03\x04 no package");
    EXPECT_EQ(failure_of([&] { application->open(U"坏.doc"); }),
              "无法处理文档“坏.doc”：LibreOffice 不能将它作为文档打开。");
}

} // namespace tarvik::test

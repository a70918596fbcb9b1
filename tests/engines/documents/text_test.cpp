#include "tests/engines/documents/document_parts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

std::string control(const std::string& contents, const std::string& properties = {})
{
    return "<w:sdt><w:sdtPr>" + properties + "</w:sdtPr><w:sdtContent>" + contents + "</w:sdtContent></w:sdt>";
}

// The first table, itself in a content control, has every kind of cell and wrapping; other tables stand around it.
std::string odd_tables()
{
    const auto text_box =
        "<w:p><w:r><w:pict><w:txbxContent>" + plain_table(1, 1) + "</w:txbxContent></w:pict></w:r></w:p>";
    const auto first = row(cell(paragraph("a"), "<w:gridSpan w:val=\"2\"/>") + cell(paragraph("b")));
    const auto second =
        control(row(cell(paragraph("c"), "<w:vMerge w:val=\"restart\"/>") + control(cell(paragraph("d"))) +
                    "<w:customXml w:element=\"x\">" + cell(paragraph("e")) + "</w:customXml>"));
    const auto third = row(cell(paragraph("f"), "<w:vMerge/>") +
                               cell(plain_table(2, 2) + paragraph("g"), "<w:vMerge w:val=\"continue\"/>") +
                               cell(control(paragraph("h"))),
                           "<w:ins w:id=\"1\"/>");
    const auto fourth = "<w:ins w:id=\"2\">" +
                        row(cell(paragraph("i"), "<w:hMerge w:val=\"restart\"/>") +
                                cell(paragraph("j"), "<w:hMerge/>") + cell(paragraph("k"), "<w:vMerge/>"),
                            "<w:gridBefore w:val=\"1\"/>") +
                        "</w:ins>";
    return text_box + control(table(first + second + third + fourth)) + plain_table(5, 5) + "<w:sectPr/>";
}

// Row, column and the text that stands there.
struct Place {
    int row;
    int column;
    std::string text;
};

} // namespace

TEST(Cells, are_counted_as_the_word_processor_counts_them)
{
    DocumentFile file(document_parts(odd_tables()));
    const auto old = texts_of(part_of(file.folder.read("t.doc"), main_part));
    const Place places[] = {{1, 1, "a"}, {1, 2, "b"}, {2, 1, "c"}, {2, 2, "d"}, {2, 3, "e"},
                            {3, 2, "g"}, {3, 3, "h"}, {4, 1, "i"}, {4, 2, "k"}};
    for (const auto& [row, column, text] : places) {
        auto expected = old;
        *std::find(expected.begin(), expected.end(), text) = "新";
        if (text == "g")
            expected.erase(std::find(expected.begin(), expected.end(), "f") + 1,
                           std::find(expected.begin(), expected.end(), "新"));
        EXPECT_EQ(texts_of(file.document_with(row, column, U"新")), expected) << text;
    }
}

TEST(Cells, keep_their_numbers_while_others_are_written)
{
    constexpr int places[][2] = {{4, 2}, {3, 2}, {1, 1}, {2, 2}, {3, 2}, {3, 3}, {4, 1}, {2, 1}, {1, 2}, {2, 3}};
    DocumentFile file(document_parts(odd_tables()));
    file.folder.write("p.jpg", jpeg(9, 9));
    auto& at_once = file.open();
    file.open().save_as(U"step.doc");
    int number = 0;
    for (const auto& [row, column] : places) {
        auto& one = file.open(U"step.doc");
        const Text text = number_text(++number);
        for (auto* document : {&at_once, &one}) document->set_cell_text(row, column, text);
        if (row == 2)
            for (auto* document : {&at_once, &one}) document->add_picture(row, column, U"p.jpg");
        one.save_as(U"step.doc");
        one.close();
    }
    at_once.save_as(U"once.doc");
    EXPECT_EQ(part_of(file.folder.read("once.doc"), main_part), part_of(file.folder.read("step.doc"), main_part));
}

TEST(Cells, that_are_not_there_are_a_failure_and_nothing_changes)
{
    DocumentFile file(document_parts(odd_tables()));
    const auto refused = [&file](int row, int column) {
        return failure_of([&] { file.open().set_cell_text(row, column, U"新"); });
    };
    const std::string beginning = "无法处理文档“t.doc”：文档的第一个表格";
    EXPECT_EQ(refused(1, 3), beginning + "没有第 1 行第 3 列的单元格。");
    EXPECT_EQ(refused(5, 1), beginning + "没有第 5 行第 1 列的单元格。");
    EXPECT_EQ(refused(0, 1), beginning + "没有第 0 行第 1 列的单元格。");
    EXPECT_EQ(refused(3, 1), beginning + "里，第 3 行第 1 列的单元格已并入上方的单元格。");
    DocumentFile without(document_parts(paragraph("a")));
    EXPECT_EQ(failure_of([&] { without.open().set_cell_text(1, 1, U""); }), "无法处理文档“t.doc”：文档里没有表格。");
}

TEST(CellText, keeps_the_look_of_the_first_paragraph_and_run_and_nothing_else)
{
    const std::string properties = "<w:tcW w:w=\"900\" w:type=\"dxa\"/><w:vAlign w:val=\"center\"/>";
    const std::string fonts = "<w:rFonts w:eastAsia=\"仿宋\" w:hint=\"eastAsia\"/><w:sz w:val=\"21\"/>";
    const std::string look = "<w:pPr><w:jc w:val=\"center\"/><w:rPr><w:b/></w:rPr></w:pPr>";
    const auto old =
        "<w:p w:rsidR=\"007\">" + look + "<w:proofErr w:type=\"spellStart\"/><w:r><w:rPr>" + fonts +
        "<w:rPrChange w:id=\"3\"><w:rPr/></w:rPrChange></w:rPr><w:t>旧</w:t></w:r><w:r><w:t>文</w:t></w:r>" +
        "<w:bookmarkStart w:id=\"8\"/><w:bookmarkEnd w:id=\"8\"/></w:p>" + plain_table(1, 1) +
        "<w:bookmarkStart w:id=\"9\" w:name=\"到下格\"/>" + paragraph("尾");
    DocumentFile file(document_parts(table(row(cell(old, properties) + cell(paragraph("邻"))))));
    const auto with = [&](const std::string& run) {
        return cell("<w:p w:rsidR=\"007\">" + look + "<w:bookmarkStart w:id=\"9\" w:name=\"到下格\"/><w:r><w:rPr>" +
                        fonts + "</w:rPr>" + run + "</w:r></w:p>",
                    properties) +
               cell(paragraph("邻"));
    };
    const auto written = [&](TextView text) {
        const auto document = file.document_with(1, 1, text);
        const auto start = document.find("<w:tr>") + 6;
        return document.substr(start, document.find("</w:tr>") - start);
    };
    const std::string kept = "<w:t xml:space=\"preserve\">";
    EXPECT_EQ(written(U"新 文"), with("<w:t>新 文</w:t>"));
    EXPECT_EQ(written(U" 𠮷<&>\""), with(kept + " 𠮷&lt;&amp;&gt;&quot;</w:t>"));
    EXPECT_EQ(written(U"检测\r\n        好 "), with("<w:t>检测</w:t><w:br/>" + kept + "        好 </w:t>"));
    EXPECT_EQ(written(U"\r\n一\n\r二\v\t三"),
              with("<w:br/><w:t>一</w:t><w:br/><w:br/><w:t>二</w:t><w:br/><w:tab/><w:t>三</w:t>"));
    EXPECT_EQ(written(U"a\x01\x1F\xFFFE\xD800z"), with("<w:t>a\xEF\xBF\xBDz</w:t>"));
    EXPECT_EQ(written(U""),
              cell("<w:p w:rsidR=\"007\">" + look + "<w:bookmarkStart w:id=\"9\" w:name=\"到下格\"/><w:r><w:rPr>" +
                       fonts + "</w:rPr></w:r></w:p>",
                   properties) +
                  cell(paragraph("邻")));
}

TEST(CellText, in_an_empty_cell_looks_as_the_paragraph_mark_tells)
{
    const std::string mark = "<w:rFonts w:eastAsia=\"楷体\"/>";
    DocumentFile file(document_parts(
        table(row(cell("<w:p><w:pPr><w:rPr><w:ins w:id=\"1\"/>" + mark + "</w:rPr></w:pPr></w:p>") + cell("")))));
    const auto document = file.document_after([](TextDocument& opened) {
        opened.set_cell_text(1, 1, U"甲");
        opened.set_cell_text(1, 2, U"乙");
    });
    EXPECT_THAT(document, testing::HasSubstr("<w:r><w:rPr>" + mark + "</w:rPr><w:t>甲</w:t></w:r>"));
    EXPECT_THAT(document, testing::HasSubstr("<w:tc><w:p><w:r><w:t>乙</w:t></w:r></w:p></w:tc>"));
}

TEST(CellText, takes_the_place_of_a_placeholder)
{
    const std::string look = "<w:rPr><w:color w:val=\"000000\"/></w:rPr>";
    const std::string binding = "<w:dataBinding w:xpath=\"/a\"/>";
    const auto placeholder = cell("<w:p><w:r><w:rPr><w:rStyle w:val=\"Grey\"/></w:rPr><w:t>点击此处</w:t></w:r></w:p>");
    DocumentFile file(
        document_parts(table(row(control(placeholder, look + "<w:alias w:val=\"甲\"/><w:showingPlcHdr/>" + binding)))));
    EXPECT_THAT(file.document_with(1, 1, U"新"),
                testing::HasSubstr(control(cell("<w:p><w:r>" + look + "<w:t>新</w:t></w:r></w:p>"),
                                           look + "<w:alias w:val=\"甲\"/>")));
}

TEST(CellText, of_several_lines_keeps_them_in_a_control_for_one)
{
    DocumentFile file(document_parts(table(row(control(cell(paragraph("旧")), "<w:text/>")))));
    EXPECT_THAT(file.document_with(1, 1, U"新"), testing::HasSubstr("<w:sdtPr><w:text/></w:sdtPr>"));
    EXPECT_THAT(file.document_with(1, 1, U"甲\r\n乙"), testing::HasSubstr("<w:text w:multiLine=\"1\"/>"));
}

TEST(Document, keeps_everything_else_byte_for_byte_and_the_format_it_was_opened_in)
{
    auto parts = document_parts("<w:p w:a='1' />\r\n<!-- b -->&#x4e00;" + plain_table(1, 2) + "<w:sectPr/>");
    edit_part(parts, "[Content_Types].xml", "openxmlformats-officedocument.wordprocessingml.document.main+xml",
              "ms-word.document.macroEnabled.main+xml");
    DocumentFile file(parts);
    auto& document = file.open();
    document.save_as(U"neu.doc");
    EXPECT_EQ(file.folder.read("neu.doc"), file.folder.read("t.doc"));
    document.set_cell_text(1, 2, U"新");
    file.folder.write("neu.doc", "old");
    document.save_as(U"neu.doc");
    document.set_cell_text(1, 1, U"不存");
    document.close();
    auto expected = parts;
    edit_part(expected, main_part, "<w:p w:a='1' />", "<w:p w:a=\"1\"/>");
    edit_part(expected, main_part, ">12<", ">新<");
    EXPECT_EQ(parts_of(file.folder.read("neu.doc")), expected);
    EXPECT_EQ(parts_of(file.folder.read("t.doc")), parts);
    EXPECT_EQ(failure_of([&] { document.save_as(U"neu.doc"); }), "文档“neu.doc”已经关闭。");
}

TEST(Document, is_printed_as_it_stands)
{
    DocumentFile file(document_parts(plain_table(1, 1)));
    const auto document = ooxml_documents(file.files, file.printer)(U"t.doc");
    document->print_out();
    document->set_cell_text(1, 1, U"新");
    document->print_out();
    EXPECT_EQ(file.printer.printed, (std::vector<Text>{U"t.doc", U"t.doc"}));
    const auto& printed = file.printer.files;
    EXPECT_EQ(printed[0].first, file.files.resolve(U"t.doc"));
    EXPECT_EQ(texts_of(part_of(printed[0].second, main_part)).front(), "11");
    EXPECT_EQ(texts_of(part_of(printed[1].second, main_part)).front(), "新");
    EXPECT_FALSE(std::filesystem::exists(printed[1].first.parent_path()));
    EXPECT_EQ(texts_of(part_of(file.folder.read("t.doc"), main_part)).front(), "11");
}

} // namespace tarvik::test

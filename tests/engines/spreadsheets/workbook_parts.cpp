#include "tests/engines/spreadsheets/workbook_parts.h"

namespace tarvik::test {

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\r\n";
const std::string main_space = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
const std::string office = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
const std::string sheet_type = "application/vnd.openxmlformats-officedocument.spreadsheetml.";

std::string relationship(const std::string& id, const std::string& type, const std::string& target)
{
    return "<Relationship Id=\"" + id + "\" Type=\"" + type + "\" Target=\"" + target + "\"/>";
}

std::string relationships(const std::string& all)
{
    return declaration + "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" +
           all + "</Relationships>";
}

std::string type_of(const std::string& part, const std::string& type)
{
    return "<Override PartName=\"/" + part + "\" ContentType=\"" + type + "\"/>";
}

std::string sheet(const std::string& before, const std::string& sheet_data, const std::string& behind)
{
    return declaration + "<worksheet xmlns=\"" + main_space + "\" xmlns:r=\"" + office + "\">" + before +
           "<sheetData>" + sheet_data + "</sheetData>" + behind + "</worksheet>";
}

const char* const styles =
    "<numFmts count=\"1\"><numFmt numFmtId=\"164\" formatCode=\"0.00&quot;元&quot;\"/></numFmts>"
    "<fonts count=\"1\"><font><sz val=\"11\"/><name val=\"宋体\"/></font></fonts>"
    "<fills count=\"1\"><fill><patternFill patternType=\"none\"/></fill></fills>"
    "<borders count=\"1\"><border><left/><right/><top/><bottom/></border></borders>"
    "<cellStyleXfs count=\"1\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellStyleXfs>"
    "<cellXfs count=\"4\"><xf numFmtId=\"0\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/>"
    "<xf numFmtId=\"164\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/><xf numFmtId=\"14\" fontId=\"0\" fillId=\"0\" "
    "borderId=\"0\"/><xf numFmtId=\"49\" fontId=\"0\" fillId=\"0\" borderId=\"0\"/></cellXfs>";

} // namespace

Parts simple_parts(const std::string& sheet_data, const std::string& behind)
{
    const auto package = "http://schemas.openxmlformats.org/package/2006/";
    return {
        {"[Content_Types].xml", declaration + "<Types xmlns=\"" + package +
                                    "content-types\"><Default Extension=\"rels\" ContentType=\"application/" +
                                    "vnd.openxmlformats-package.relationships+xml\"/><Default Extension=\"xml\" "
                                    "ContentType=\"application/xml\"/>" +
                                    type_of("xl/workbook.xml", sheet_type + "sheet.main+xml") +
                                    type_of("xl/worksheets/sheet1.xml", sheet_type + "worksheet+xml") +
                                    type_of("xl/worksheets/sheet2.xml", sheet_type + "worksheet+xml") +
                                    type_of("xl/styles.xml", sheet_type + "styles+xml") +
                                    type_of("xl/sharedStrings.xml", sheet_type + "sharedStrings+xml") + "</Types>"},
        {"_rels/.rels", relationships(relationship("rId1", office + "/officeDocument", "xl/workbook.xml"))},
        {"xl/workbook.xml", declaration + "<workbook xmlns=\"" + main_space + "\" xmlns:r=\"" + office +
                                "\"><workbookPr/><sheets><sheet name=\"第一张\" sheetId=\"1\" r:id=\"rId1\"/>"
                                "<sheet name=\"第二张\" sheetId=\"2\" state=\"hidden\" r:id=\"rId2\"/></sheets>"
                                "<definedNames><definedName name=\"合计\">第一张!$E$1</definedName></definedNames>"
                                "<extLst/></workbook>"},
        {"xl/_rels/workbook.xml.rels",
         relationships(relationship("rId2", office + "/worksheet", "/xl/worksheets/sheet2.xml") +
                       relationship("rId1", office + "/worksheet", "worksheets/sheet1.xml") +
                       relationship("rId3", office + "/styles", "styles.xml") +
                       relationship("rId4", office + "/sharedStrings", "sharedStrings.xml"))},
        {"xl/worksheets/sheet1.xml",
         sheet("<dimension ref=\"B2:C4\"/><cols><col min=\"2\" max=\"2\" style=\"3\"/></cols>", sheet_data, behind)},
        {"xl/worksheets/sheet2.xml", sheet("", "<row r=\"1\"><c r=\"A1\"><f>第一张!B2*2</f><v>84</v></c></row>", "")},
        {"xl/styles.xml", declaration + "<styleSheet xmlns=\"" + main_space + "\">" + styles + "</styleSheet>"},
        {"xl/sharedStrings.xml", declaration + "<sst xmlns=\"" + main_space +
                                     "\" count=\"3\" uniqueCount=\"3\"><si><t>客户</t></si>"
                                     "<si><r><rPr><b/></rPr><t>粗</t></r><r><t xml:space=\"preserve\">体 </t></r>"
                                     "<rPh sb=\"0\" eb=\"1\"><t>ふと</t></rPh></si><si><t>a &amp; b</t></si></sst>"},
    };
}

Parts rich_parts()
{
    auto parts = simple_parts(
        "<row r=\"2\" spans=\"2:3\" s=\"2\" customFormat=\"1\" ht=\"20\"><c r=\"B2\" s=\"1\"><v>42</v></c>"
        "<c r=\"C2\" s=\"3\" t=\"s\"><v>1</v></c></row>"
        "<row r=\"4\"><c r=\"B4\" t=\"str\"><f>IF(B2&gt;1,\"是\",\"否\")</f><v>是</v></c></row>",
        "<mergeCells count=\"1\"><mergeCell ref=\"B6:D7\"/></mergeCells><phoneticPr fontId=\"1\"/>"
        "<conditionalFormatting sqref=\"B2\"><cfRule type=\"cellIs\" dxfId=\"0\" priority=\"1\" operator=\"equal\">"
        "<formula>\"x\"</formula></cfRule></conditionalFormatting><dataValidations count=\"1\"><dataValidation "
        "type=\"list\" sqref=\"C2\" "
        "prompt='他说\"好\"'><formula1>\"甲,乙\"</formula1></dataValidation></dataValidations>\r\n"
        "<pageMargins left=\"0.7\" right=\"0.7\" top=\"0.75\" bottom=\"0.75\" header=\"0.3\" footer=\"0.3\"/>"
        "<headerFooter><oddHeader>&amp;C第 &amp;P 页&#13;&#10;</oddHeader></headerFooter><drawing r:id=\"rId1\"/>"
        "<legacyDrawing r:id=\"rId2\"/>");
    edit_part(parts, "[Content_Types].xml", sheet_type + "sheet.main+xml",
              "application/vnd.ms-excel.sheet.macroEnabled.main+xml");
    edit_part(parts, "[Content_Types].xml", "</Types>",
              "<Default Extension=\"bin\" ContentType=\"application/vnd.ms-office.vbaProject\"/>" +
                  type_of("xl/calcChain.xml", sheet_type + "calcChain+xml") +
                  type_of("xl/chartsheets/sheet1.xml", sheet_type + "chartsheet+xml") + "</Types>");
    edit_part(parts, "xl/workbook.xml", "<sheets>", "<sheets><sheet name=\"图\" sheetId=\"3\" r:id=\"rId5\"/>");
    edit_part(parts, "xl/_rels/workbook.xml.rels", "</Relationships>",
              relationship("rId5", office + "/chartsheet", "chartsheets/sheet1.xml") +
                  relationship("rId6", office + "/calcChain", "calcChain.xml") +
                  relationship("rId7", "http://schemas.microsoft.com/office/2006/relationships/vbaProject",
                               "vbaProject.bin") +
                  "</Relationships>");
    const Parts others{
        {"xl/chartsheets/sheet1.xml", "<chartsheet/>"},
        {"xl/calcChain.xml", "<calcChain><c r=\"B4\" i=\"1\"/></calcChain>"},
        {"xl/worksheets/_rels/sheet1.xml.rels",
         relationships(relationship("rId1", office + "/drawing", "../drawings/drawing1.xml"))},
        {"xl/drawings/drawing1.xml", "<xdr:wsDr xmlns:xdr='d'>\r\n\t<xdr:pic/>&#10;</xdr:wsDr>"},
        {"xl/charts/chart1.xml", "<c:chart xmlns:c='c'><c:numCache><c:v>42</c:v></c:numCache></c:chart>"},
        {"xl/media/image1.png", std::string("\x89PNG\0\r\n\xff\xfe", 9)},
        {"xl/comments1.xml", "<comments><text>批注</text></comments>"},
        {"xl/printerSettings/printerSettings1.bin", std::string(700, '\0')},
        {"xl/vbaProject.bin", "\xD0\xCF\x11\xE0 macros"},
        {"xl/_rels/vbaProject.bin.rels",
         relationships(relationship("rId1", "t/vbaProjectSignature", "vbaProjectSignature.bin"))},
        {"xl/vbaProjectSignature.bin", "signature"},
        {"docProps/app.xml", "<Properties/>"},
    };
    parts.insert(parts.end(), others.begin(), others.end());
    return parts;
}

} // namespace tarvik::test

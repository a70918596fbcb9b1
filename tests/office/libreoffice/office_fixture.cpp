#include "tests/office/libreoffice/office_fixture.h"

#include "tests/office/spreadsheets/workbook_parts.h"
#include "tests/support/places.h"

namespace tarvik::test {

namespace fs = std::filesystem;

namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";

Parts document_parts(const std::string& body)
{
    const std::string types = "application/vnd.openxmlformats-", office = "http://schemas.openxmlformats.org/";
    return {
        {"[Content_Types].xml", declaration + "<Types xmlns=\"" + office + "package/2006/content-types\">" +
                                    "<Default Extension=\"rels\" ContentType=\"" + types +
                                    "package.relationships+xml\"/>" +
                                    "<Override PartName=\"/word/document.xml\" ContentType=\"" + types +
                                    "officedocument.wordprocessingml.document.main+xml\"/></Types>"},
        {"_rels/.rels", declaration + "<Relationships xmlns=\"" + office +
                            "package/2006/relationships\"><Relationship Id=\"r1\" Type=\"" + office +
                            "officeDocument/2006/relationships/officeDocument\" Target=\"word/document.xml\"/>"
                            "</Relationships>"},
        {"word/document.xml", declaration + "<w:document xmlns:w=\"" + office +
                                  "wordprocessingml/2006/main\"><w:body>" + body +
                                  "<w:sectPr><w:pgSz w:w=\"11906\" w:h=\"16838\"/><w:pgMar w:top=\"1440\" "
                                  "w:right=\"1800\" w:bottom=\"1440\" w:left=\"1800\" w:header=\"851\" "
                                  "w:footer=\"992\" w:gutter=\"0\"/></w:sectPr></w:body></w:document>"},
    };
}

} // namespace

libreoffice::Settings office_settings()
{
    libreoffice::Settings settings;
    settings.plugin = fs::path(built_installation()) / libreoffice::plugin_file;
    return settings;
}

std::string failure_of(const std::function<void()>& work)
{
    try {
        work();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return "no failure";
}

void OfficeTest::SetUp()
{
    if (!fs::exists(office_settings().plugin)) GTEST_SKIP() << "the plugin was not built: no SDK of LibreOffice here";
}

void OfficeTest::convert(const std::string& from, const std::string& to, const std::string& filter)
{
    auto file = office.open(folder.path() / from);
    ASSERT_TRUE(file) << from;
    file.call([&](libreoffice::OpenFile& opened) { opened.store(folder.path() / to, filter); });
}

void OfficeTest::make_workbook(const std::string& name, const std::string& rows, const std::string& behind)
{
    folder.write("source.xlsx", make_package(simple_parts(rows, behind)));
    convert("source.xlsx", name, "MS Excel 97");
}

void OfficeTest::make_document(const std::string& name, const std::string& body)
{
    folder.write("source.docx", make_package(document_parts(body)));
    convert("source.docx", name, "MS Word 97");
}

} // namespace tarvik::test

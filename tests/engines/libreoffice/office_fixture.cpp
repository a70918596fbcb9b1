#include "tests/engines/libreoffice/office_fixture.h"

#include "platform/program_start.h"
#include "tests/engines/documents/document_parts.h"
#include "tests/engines/spreadsheets/workbook_parts.h"
#include "tests/support/places.h"

#ifdef __SANITIZE_ADDRESS__
// LibreOffice's own libraries, and the types that its headers make, stay until the program ends.
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libuno_sal.so\nleak:libuno_cppu.so\nleak:libuno_cppuhelpergcc3.so\nleak:libgcc3_uno.so\n"
           "leak:libbinaryurplo.so\nleak:libunoidllo.so\nleak:com::sun::star::uno::Type::operator new\n";
}
#endif

namespace tarvik::test {

namespace fs = std::filesystem;

namespace {

const std::string page = "<w:sectPr><w:pgSz w:w=\"11906\" w:h=\"16838\"/><w:pgMar w:top=\"1440\" w:right=\"1800\" "
                         "w:bottom=\"1440\" w:left=\"1800\" w:header=\"851\" w:footer=\"992\" w:gutter=\"0\"/>"
                         "</w:sectPr>";

} // namespace

libreoffice::Settings office_settings()
{
    libreoffice::Settings settings;
    settings.plugin = fs::path(built_installation()) / libreoffice::plugin_file;
    return settings;
}

void OfficeTest::SetUp()
{
    start_program(0, nullptr); // as every program: what is written to a process that died fails
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
    folder.write("source.docx", make_package(document_parts(body + page)));
    convert("source.docx", name, "MS Word 97");
}

} // namespace tarvik::test

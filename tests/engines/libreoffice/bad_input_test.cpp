#include "engines/packages/file_kind.h"
#include "tests/engines/libreoffice/office_fixture.h"
#include "tests/support/compound_files.h"

namespace tarvik::test {

namespace {

using namespace std::string_literals;
const std::string locked = "文件设有打开密码，请先去掉密码。";
const std::string oldest = "\x09\0\4\0\2\0\x10\0"s, last_record = "\x0a\0\0\0"s;
const std::string first_record("\x09\x08\x02\0\0\6", 6), password_record("\x2f\0\2\0\0\0", 6);

} // namespace

TEST(BadInput, files_that_are_none_are_refused_with_the_reason_before_libreoffice_starts)
{
    const auto whole = compound_file({{"Other", stream_with(0, "x")}, {"WordDocument", stream_with(10, "\0\1"s)}});
    struct Case {
        std::string name, bytes, workbook, document;
    };
    const Case cases[] = {
        {"随机", "\x01\x02random bytes", "这不是 Excel 工作簿。", "这不是 Word 文档。"},
        {"空", "", "这不是 Excel 工作簿。", "这不是 Word 文档。"},
        {"其他", compound_file({{"Other", stream_with(0, "x")}}), "这不是 Excel 工作簿。", "这不是 Word 文档。"},
        {"文档", compound_file({{"WordDocument", stream_with(0, "x")}}), "这是一个 Word 文档，不是 Excel 工作簿。",
         "LibreOffice"},
        {"表", compound_file({{"Workbook", stream_with(0, first_record)}}), "LibreOffice",
         "这是一个 Excel 工作簿，不是 Word 文档。"},
        {"大写", compound_file({{"WORKBOOK", stream_with(0, first_record)}}), "LibreOffice",
         "这是一个 Excel 工作簿，不是 Word 文档。"},
        {"小写", compound_file({{"worddocument", stream_with(0, "x")}}), "这是一个 Word 文档，不是 Excel 工作簿。",
         "LibreOffice"},
        {"最早", oldest + last_record, "LibreOffice", "这是一个 Excel 工作簿，不是 Word 文档。"},
        {"最早截断", oldest, "文件不完整或已损坏。", "文件不完整或已损坏。"},
        {"密码一", compound_file({{"WordDocument", stream_with(0, "x")}, {"EncryptedPackage", stream_with(0, "x")}}),
         "LibreOffice", locked},
        {"密码二", compound_file({{"Workbook", stream_with(0, first_record + password_record)}}), "LibreOffice",
         locked},
        {"密码三", compound_file({{"WordDocument", stream_with(11, "\1")}}), "LibreOffice", locked},
        {"截断", whole.substr(0, whole.size() - 600), "文件不完整或已损坏。", "文件不完整或已损坏。"},
    };
    TemporaryFolder folder;
    Files files(folder.path());
    RecordedPrinter printer;
    libreoffice::Settings settings;
    settings.plugin = folder.path() / "none"; // no case may come so far as to need it, those for LibreOffice aside
    libreoffice::LibreOffice office(settings);
    HiddenEngines engines(libreoffice_files(office, files, printer));
    for (const auto& one : cases) {
        folder.write(one.name, one.bytes);
        const auto path = from_utf8(one.name);
        const auto workbook = failure_of([&] { engines.create_spreadsheet()->open(path); });
        const auto document = failure_of([&] { engines.create_document()->open(path); });
        EXPECT_NE(workbook.find(one.workbook), std::string::npos) << one.name << ": " << workbook;
        EXPECT_NE(document.find(one.document), std::string::npos) << one.name << ": " << document;
        EXPECT_NE(workbook.find("“" + one.name + "”"), std::string::npos) << workbook;
        EXPECT_EQ(folder.read(one.name), one.bytes);
    }
}

TEST(BadInput, a_compound_file_is_whole_or_damaged_at_every_length)
{
    const auto whole = compound_file({{"WordDocument", stream_with(0, "abc")}, {"1Table", stream_with(0, "def")}});
    // The last sector may end with its stream: 5,000 bytes in ten sectors leave 120.
    for (std::size_t size = 8; size < whole.size(); ++size)
        ASSERT_EQ(file_kind(std::string_view(whole).substr(0, size)),
                  size >= whole.size() - 120 ? FileKind::Document : FileKind::Damaged)
            << size;
    for (std::size_t at = 0; at < 1'536; ++at)
        for (const char byte : {'\0', '\1', '\x7f', '\xff'}) {
            auto changed = whole;
            changed[at] = byte;
            file_kind(changed); // ends, whatever it finds
        }
    // Thousands of streams that share a chain would be walked thousands of times.
    auto sharing = compound_file({{"WordDocument", stream_with(0, "abc")}, {"1Table", std::string(50'000, 'x')}});
    const auto place_of = [&](const char* beginning) { return sharing.find(std::string(beginning, 4)) + 116; };
    ASSERT_LT(std::max(place_of("W\0o\0"), place_of("1\0T\0")), sharing.size());
    ASSERT_GT(std::min(place_of("W\0o\0"), place_of("1\0T\0")), 512U); // both are there
    sharing.replace(place_of("W\0o\0"), 8, sharing.substr(place_of("1\0T\0"), 8));
    EXPECT_EQ(file_kind(sharing), FileKind::Damaged);
}

} // namespace tarvik::test

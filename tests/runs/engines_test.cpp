#include "runs/engines.h"

#include "tests/support/compound_files.h"
#include "tests/support/failure_of.h"
#include "tests/support/packages.h"
#include "tests/support/recorded_office.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

/// Files of every kind under names that say nothing of it, and two offices that record what they are asked to open.
struct Offices {
    TemporaryFolder folder;
    DiskFiles files{folder.path()};
    RecordedPrinter printer;
    libreoffice::LibreOffice libreoffice;
    RecordedOffice* embedded = nullptr;
    RecordedOffice* suite = nullptr;
    std::unique_ptr<OfficeEngines> engines;

    Offices()
    {
        folder.write("package.xls", make_package({{"a", "b"}}));
        folder.write("workbook.xlsx", file_with_stream("Workbook"));
        folder.write("document.docx", file_with_stream("WordDocument"));
        folder.write("locked.xlsx", file_with_stream("EncryptedPackage"));
        folder.write("text.doc", "客户\t1\r\n");
        folder.write("empty.xlsx", "");
        auto first = std::make_unique<RecordedOffice>();
        auto second = std::make_unique<RecordedOffice>();
        embedded = first.get();
        suite = second.get();
        engines = engines_by_content(files, std::move(first), std::move(second));
    }
};

} // namespace

TEST(Engines, what_a_file_holds_decides_who_opens_it)
{
    Offices offices;
    for (const auto* path : {U"package.xls", U"workbook.xlsx", U"locked.xlsx", U"empty.xlsx", U"missing.xls"}) {
        auto application = offices.engines->create_spreadsheet();
        application->open(path);
        application->quit();
    }
    for (const auto* path : {U"package.xls", U"document.docx", U"text.doc"}) {
        offices.engines->create_document()->open(path);
    }

    const auto opened = [](const auto& tasks) {
        Text names;
        for (const auto& task : tasks) names += task.opened + U"|";
        return to_utf8(names);
    };
    EXPECT_EQ(opened(offices.embedded->tasks), "package.xls|empty.xlsx|missing.xls|");
    EXPECT_EQ(opened(offices.suite->tasks), "workbook.xlsx|locked.xlsx|");
    EXPECT_EQ(opened(offices.embedded->documents), "package.xls|text.doc|");
    EXPECT_EQ(opened(offices.suite->documents), "document.docx|");
    EXPECT_TRUE(offices.embedded->tasks.front().quit && offices.suite->tasks.front().quit);
}

} // namespace tarvik::test

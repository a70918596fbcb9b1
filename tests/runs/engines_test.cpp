#include "runs/engines.h"

#include "tests/support/compound_files.h"
#include "tests/support/packages.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

namespace tarvik::test {

TEST(Engines, what_a_file_holds_decides_who_opens_it)
{
    TemporaryFolder folder;
    Files files(folder.path());
    folder.write("package.xls", make_package({{"a", "b"}}));
    folder.write("workbook.xlsx", file_with_stream("Workbook"));
    folder.write("document.docx", file_with_stream("WordDocument"));
    folder.write("locked.xlsx", file_with_stream("EncryptedPackage"));
    folder.write("text.doc", "客户\t1\r\n");
    folder.write("empty.xlsx", "");
    for (const auto* path : {U"package.xls", U"text.doc", U"empty.xlsx", U"missing.xls"})
        EXPECT_FALSE(needs_suite(files, path)) << to_utf8(path);
    for (const auto* path : {U"workbook.xlsx", U"document.docx", U"locked.xlsx"})
        EXPECT_TRUE(needs_suite(files, path)) << to_utf8(path);
}

} // namespace tarvik::test

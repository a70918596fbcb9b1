#include "runs/engines.h"
#include "tests/engines/libreoffice/office_fixture.h"
#include "tests/engines/spreadsheets/workbook_parts.h"
#include "tests/support/compound_files.h"
#include "tests/support/places.h"

#include <gmock/gmock.h>

namespace tarvik::test {

/// The program as it usually runs: its own engine, which asks the suite for what it cannot calculate itself.
class SuiteResults : public OfficeTest {
protected:
    SuiteResults()
    {
        folder.write("t.xlsx",
                     make_package(simple_parts(
                         "<row r=\"1\"><c r=\"A1\"><v>1</v></c><c r=\"B1\"><f>SUMX2MY2(A1:A1,A2:A2)</f><v>-3</v></c>"
                         "<c r=\"C1\"><f>B1+1</f><v>-2</v></c><c r=\"D1\"><f>NOSUCH(A1)</f><v>7</v></c></row>"
                         "<row r=\"2\"><c r=\"A2\"><v>2</v></c></row>")));
    }
};

TEST_F(SuiteResults, stand_in_what_the_program_cannot_calculate)
{
    const auto usual = make_engines(Engine::Auto, files, printer, office);
    auto application = usual->create_spreadsheet();
    auto& workbook = application->open(U"t.xlsx");
    auto& sheet = workbook.worksheet(1);
    EXPECT_EQ(sheet.cell(1, 3), U"-2"); // nothing is written yet
    EXPECT_FALSE(office.process_group());
    sheet.set_cell(1, 1, 5.0);
    EXPECT_EQ(to_utf8(sheet.cell(1, 2) + U" " + sheet.cell(1, 3)), "21 22");
    EXPECT_THAT(failure_of([&] { static_cast<void>(sheet.cell(1, 4)); }), testing::HasSubstr("D1 的公式（NOSUCH）"));
    workbook.close(true);
    auto& saved = application->open(U"t.xlsx").worksheet(1);
    EXPECT_EQ(to_utf8(saved.cell(1, 2) + U" " + saved.cell(1, 3)), "21 22");
    EXPECT_NE(failure_of([&] { static_cast<void>(saved.is_empty(1, 4)); }), "no failure");
}

TEST_F(SuiteResults, are_missed_with_a_message_where_there_is_no_suite)
{
    auto settings = office_settings();
    settings.plugin = folder.path() / "none.so";
    libreoffice::LibreOffice none(settings);
    const auto usual = make_engines(Engine::Auto, files, printer, none);
    auto application = usual->create_spreadsheet();
    auto& sheet = application->open(U"t.xlsx").worksheet(1);
    sheet.set_cell(1, 1, 5.0);
    EXPECT_THAT(failure_of([&] { static_cast<void>(sheet.is_empty(1, 3)); }),
                testing::AllOf(testing::HasSubstr("t.xlsx"), testing::HasSubstr("C1"), testing::HasSubstr("SUMX2MY2"),
                               testing::HasSubstr("请先用电子表格软件打开并保存该文件")));
}

// The file was made with the password that applications set where the user gave none; A1 is 20, B1 is A1+30.
TEST_F(SuiteResults, come_with_a_file_behind_the_password_that_all_know)
{
    std::filesystem::copy_file(source_folder() + "/tests/engines/libreoffice/default_password.xlsx",
                               folder.path() / "locked.xlsx");
    const auto usual = make_engines(Engine::Auto, files, printer, office);
    auto application = usual->create_spreadsheet();
    auto& workbook = application->open(U"locked.xlsx");
    auto& sheet = workbook.worksheet(1);
    EXPECT_EQ(to_utf8(sheet.cell(1, 1) + U" " + sheet.cell(1, 2)), "20 50");
    sheet.set_cell(1, 1, 1.0);
    EXPECT_EQ(to_utf8(sheet.cell(1, 2)), "31");
    workbook.save_as(U"open.xlsx");
    EXPECT_EQ(to_utf8(application->open(U"open.xlsx").worksheet(1).cell(1, 2)), "31");
    auto& itself = application->open(U"locked.xlsx");
    itself.worksheet(1).set_cell(1, 1, 2.0);
    itself.close(true);
    for (const auto* name : {"open.xlsx", "locked.xlsx"})
        EXPECT_EQ(folder.read(name).substr(0, 2), "PK") << "it needs no password";
}

TEST_F(SuiteResults, are_none_of_a_file_that_the_suite_takes_for_a_text)
{
    folder.write("locked.xlsx",
                 compound_file({{"EncryptionInfo", stream_with(0, "x")}, {"EncryptedPackage", stream_with(0, "x")}}));
    auto application = engines.create_spreadsheet();
    EXPECT_THAT(failure_of([&] { application->open(U"locked.xlsx"); }), testing::HasSubstr("密码"));
}

} // namespace tarvik::test

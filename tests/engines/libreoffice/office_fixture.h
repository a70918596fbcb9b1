#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "tests/support/failure_of.h"
#include "tests/support/test_program.h"

#include <gtest/gtest.h>

#include <thread>

namespace tarvik::test {

/// Settings for the plugin that is built beside the program.
libreoffice::Settings office_settings();

/// Waits some minutes at most, which only end a test that has failed.
inline bool comes_true(const std::function<bool()>& condition)
{
    for (int attempt = 0; attempt < 10'000 && !condition(); ++attempt)
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    return condition();
}

/// A folder with files and LibreOffice to work on them. Tests are skipped where the plugin was not built.
class OfficeTest : public testing::Test {
protected:
    explicit OfficeTest(libreoffice::Settings settings = office_settings()) : office(std::move(settings)) {}
    void SetUp() override;

    /// Has LibreOffice read one file of the folder and write another in the format that it calls `filter`.
    void convert(const std::string& from, const std::string& to, const std::string& filter);
    /// Makes `name` (.xls) of the rows of a first worksheet, what is behind them, and a second worksheet.
    void make_workbook(const std::string& name, const std::string& rows, const std::string& behind = {});
    /// Makes `name` (.doc) with the body of a document.
    void make_document(const std::string& name, const std::string& body);

    TemporaryFolder folder;
    Files files{folder.path()};
    RecordedPrinter printer;
    libreoffice::LibreOffice office;
    HiddenEngines engines{libreoffice_files(office, files, printer)};
};

} // namespace tarvik::test

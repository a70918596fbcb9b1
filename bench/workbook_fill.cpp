// Has LibreOffice fill a binary workbook again and again and tells how long that took.
//
//     workbook-fill FOLDER WORKBOOK COUNT
//
// WORKBOOK, an .xlsx file in FOLDER, is saved as filled.xls first, which starts LibreOffice and does not count. Then
// 300 cells of that file are written COUNT times, each time into a file of its own. Prints the seconds.

#include "office/engines.h"
#include "platform/files/disk_files.h"

#include <chrono>
#include <iostream>

namespace {

using namespace tarvik;

class NoPrinter final : public Printer {
public:
    void print(const std::filesystem::path& /*file*/, TextView /*name*/) override {}
};

void fill(OfficeEngines& engines, TextView from, TextView to)
{
    constexpr int rows = 30, columns = 10;
    const auto application = engines.create_spreadsheet();
    auto& workbook = application->open(from);
    auto& sheet = workbook.worksheet(1);
    for (int row = 1; row <= rows; ++row)
        for (int column = 1; column <= columns; ++column) sheet.set_cell(row + 20, column, U"设备 " + number_text(row));
    workbook.save_as(to);
    workbook.close(true);
    application->quit();
}

void run(const std::vector<std::string>& words)
{
    DiskFiles files{std::filesystem::path(words.at(0))};
    NoPrinter printer;
    libreoffice::LibreOffice office({.plugin = TARVIK_LIBREOFFICE_PLUGIN});
    const auto engines = make_engines(Engine::LibreOffice, files, printer, office);
    fill(*engines, from_utf8(words.at(1)), U"filled.xls");
    const auto start = std::chrono::steady_clock::now();
    const int count = std::stoi(words.at(2));
    for (int number = 1; number <= count; ++number) fill(*engines, U"filled.xls", number_text(number) + U".xls");
    std::cout << std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() << '\n';
}

} // namespace

int main(int count, char** words)
{
    try {
        run({words + 1, words + count});
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "workbook-fill: " << error.what() << '\n';
        return 1;
    }
}

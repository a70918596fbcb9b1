// Has LibreOffice fill a binary workbook again and again and tells how long that took.
//
//     workbook-fill FOLDER WORKBOOK COUNT
//
// WORKBOOK, an .xlsx file in FOLDER, is saved as filled.xls first, which starts LibreOffice and does not count. Then
// 300 cells of that file are written COUNT times, each time into a file of its own. Prints the seconds.

#include "bench/fill_timing.h"

namespace {

using namespace tarvik;

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

} // namespace

int main(int count, char** arguments)
{
    const std::vector<std::string> words(arguments + 1, arguments + count);
    return time_filling("workbook-fill", words, [&words](const Files& /*files*/) -> Filling {
        return {.count = std::stoi(words.at(2)), .fill = [&words](OfficeEngines& engines, int number) {
                    if (number == 0) fill(engines, from_utf8(words.at(1)), U"filled.xls");
                    else fill(engines, U"filled.xls", number_text(number) + U".xls");
                }};
    });
}

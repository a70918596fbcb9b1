// Fills one document template again and again, each time as a report of its own, and tells how long that took.
//
//     document-fill FOLDER TEMPLATE PICTURE CELLS COUNT [ENGINE]
//
// TEMPLATE, PICTURE and CELLS lie in FOLDER, where the reports 1.doc to COUNT.doc come too. A line of CELLS is row,
// column and text with TABs between; "|" stands for a line break. The picture goes into the cell of the last line.
// ENGINE is ooxml or libreoffice. Prints the seconds; a report ahead, which starts the engine, does not count.

#include "bench/fill_timing.h"

namespace {

using namespace tarvik;

struct CellText {
    int row;
    int column;
    Text text;
};

std::vector<TextView> pieces(TextView text, char32_t separator)
{
    std::vector<TextView> all;
    for (std::size_t at = 0; at <= text.size();) {
        const auto end = std::min(text.find(separator, at), text.size());
        all.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return all;
}

std::vector<CellText> read_cells(const Files& files, TextView path)
{
    const auto told = from_utf8(files.read(path));
    std::vector<CellText> cells;
    for (const auto line : pieces(told, U'\n')) {
        const auto columns = pieces(line, U'\t');
        if (columns.size() != 3) continue;
        Text text;
        for (const auto piece : pieces(columns[2], U'|')) text += (text.empty() ? U"" : U"\r\n") + piece.str();
        cells.push_back(
            {static_cast<int>(leading_number(columns[0])), static_cast<int>(leading_number(columns[1])), text});
    }
    return cells;
}

struct Report {
    Text pattern;
    Text picture;
    std::vector<CellText> cells;
};

void fill(OfficeEngines& engines, const Report& report, int number)
{
    const auto application = engines.create_document();
    auto& document = application->open(report.pattern);
    for (const auto& [row, column, text] : report.cells) document.set_cell_text(row, column, text);
    document.add_picture(report.cells.back().row, report.cells.back().column, report.picture);
    document.save_as(number_text(number) + U".doc");
    document.close();
    application->quit();
}

} // namespace

int main(int count, char** arguments)
{
    const std::vector<std::string> words(arguments + 1, arguments + count);
    return time_filling("document-fill", words, [&words](const Files& files) -> Filling {
        const Report report{from_utf8(words.at(1)), from_utf8(words.at(2)), read_cells(files, from_utf8(words.at(3)))};
        return {.engine = words.size() > 5 && words[5] == "libreoffice" ? Engine::LibreOffice : Engine::Ooxml,
                .count = std::stoi(words.at(4)),
                .fill = [report](OfficeEngines& engines, int number) { fill(engines, report, number); }};
    });
}

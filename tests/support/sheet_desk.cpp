#include "tests/support/sheet_desk.h"

#include "engines/spreadsheets/calculation/places.h"
#include "tests/engines/spreadsheets/workbook_parts.h"

namespace tarvik::test {

namespace {

std::string escaped(std::string_view text)
{
    std::string result;
    for (const char c : text) result += c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '&' ? "&amp;" : std::string(1, c);
    return result;
}

std::string cell_of(const std::string& place, const std::string& text)
{
    const auto begin = "<c r=\"" + place + "\"";
    if (text.starts_with('=')) return begin + "><f>" + escaped(text.substr(1)) + "</f></c>";
    if (is_number(from_utf8(text))) return begin + "><v>" + text + "</v></c>";
    return begin + " t=\"inlineStr\"><is><t>" + escaped(text) + "</t></is></c>";
}

} // namespace

std::string workbook_of(const SheetContents& contents)
{
    std::map<int, std::string> rows;
    for (const auto& [place, text] : contents)
        rows[place.first] += cell_of(ooxml::place_name({place.first, place.second}), text);
    std::string all;
    for (const auto& [row, cells] : rows) all += "<row r=\"" + std::to_string(row) + "\">" + cells + "</row>";
    return make_package(simple_parts(all));
}

void SheetDesk::play(TextView command, TextView folder, std::optional<Text> file, std::deque<Answer> replies)
{
    typed_folder = folder.str();
    started.dialogs.files = {std::move(file)};
    Desk::play(command, std::move(replies));
}

std::string SheetDesk::shown(TextView path, int row, int column)
{
    const auto application = office.engine->create();
    return to_utf8(application->open(path).worksheet(1).cell(row, column));
}

} // namespace tarvik::test

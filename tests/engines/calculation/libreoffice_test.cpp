#include "tests/engines/calculation/cells_in_memory.h"
#include "tests/engines/calculation/random_formulas.h"
#include "tests/support/packages.h"
#include "tests/support/test_program.h"

#include "engines/spreadsheets/calculation/coercion.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

using calculation::CellError;

constexpr int count = 2'000;

std::string escaped(std::string_view text)
{
    std::string result;
    for (const char c : text) result += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
    return result;
}

std::string cell_of(std::string_view place, const Value& value)
{
    const std::string text = escaped(to_utf8(std::get<Text>(calculation::to_text(value))));
    const std::string begin = "<c r=\"" + std::string(place) + "\"";
    if (std::holds_alternative<Text>(value)) return begin + " t=\"inlineStr\"><is><t>" + text + "</t></is></c>";
    if (std::holds_alternative<bool>(value))
        return begin + " t=\"b\"><v>" + (std::get<bool>(value) ? "1" : "0") + "</v></c>";
    return begin + "><v>" + text + "</v></c>";
}

// Lays the data down in both forms: the cells, and the rows of a worksheet part.
std::string lay_data(CellsInMemory& cells, RandomFormulas& random)
{
    const std::vector<Text> words{U"a", U"b", U"Bc a", U"表a", U"x y", U"A"};
    const std::vector<Value> kinds{Value(), Value(3.0), Value(Text(U"t")), Value(12.5), Value(-1.5), Value(Text(U"7"))};
    std::string rows;
    for (int row = 1; row <= RandomFormulas::rows_of_data; ++row) {
        const std::vector<Value> values{random.below(12) - 2.0,
                                        (random.below(20'000) - 5'000) / 100.0,
                                        words[static_cast<std::size_t>(random.below(6))],
                                        kinds[static_cast<std::size_t>(random.below(6))],
                                        37'000.0 + random.below(9'000),
                                        row * 5.0};
        rows += "<row r=\"" + std::to_string(row) + "\">";
        for (int column = 1; column <= static_cast<int>(values.size()); ++column) {
            const auto& value = values[static_cast<std::size_t>(column) - 1];
            if (std::holds_alternative<std::monostate>(value)) continue;
            const std::string place = ooxml::place_name({row, column});
            cells.set(place, value, 2);
            rows += cell_of(place, value);
        }
        rows += "</row>";
    }
    return rows;
}

std::string part(const char* element, const std::string& contents)
{
    return "<" + std::string(element) +
           " xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\" "
           "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">" +
           contents + "</" + element + ">";
}

// Relations of these kinds, whose targets are the parts of the same name.
std::string relations(std::initializer_list<std::pair<const char*, const char*>> kinds_and_targets)
{
    std::string result = "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    for (const auto& [kind, target] : kinds_and_targets)
        result += "<Relationship Id=\"" + std::string(target) +
                  "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/" + kind +
                  "\" Target=\"" + target + ".xml\"/>";
    return result + "</Relationships>";
}

// All results are shown with 17 digits and not as what they are: a date, an amount, a part in a hundred.
std::string workbook(const std::string& formulas, const std::string& data)
{
    std::string types = "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default "
                        "Extension=\"rels\" ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>";
    for (const auto& [name, type] :
         {std::pair{"workbook", "sheet.main"}, {"first", "worksheet"}, {"second", "worksheet"}, {"styles", "styles"}})
        types += "<Override PartName=\"/" + std::string(name) +
                 ".xml\" ContentType=\"application/vnd.openxmlformats-officedocument.spreadsheetml." + type +
                 "+xml\"/>";
    return make_package(
        {{"[Content_Types].xml", types + "</Types>"},
         {"_rels/.rels", relations({{"officeDocument", "workbook"}})},
         {"_rels/workbook.xml.rels",
          relations({{"worksheet", "first"}, {"worksheet", "second"}, {"styles", "styles"}})},
         {"workbook.xml", part("workbook", "<sheets><sheet name=\"Results\" sheetId=\"1\" r:id=\"first\"/><sheet "
                                           "name=\"Data\" sheetId=\"2\" r:id=\"second\"/></sheets>")},
         {"styles.xml",
          part(
              "styleSheet",
              "<numFmts count=\"1\"><numFmt numFmtId=\"164\" formatCode=\"0.0000000000000000E+00\"/></numFmts><cellXfs "
              "count=\"2\"><xf/><xf numFmtId=\"164\" applyNumberFormat=\"1\"/></cellXfs>")},
         {"first.xml", part("worksheet", "<sheetData>" + formulas + "</sheetData>")},
         {"second.xml", part("worksheet", "<sheetData>" + data + "</sheetData>")}});
}

// What stands in the only column; texts with their quotes.
std::vector<std::string> lines_of(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);) lines.push_back(line);
    return lines;
}

bool agrees(const Value& ours, const std::string& theirs)
{
    if (std::holds_alternative<CellError>(ours)) return theirs.starts_with("\"#") || theirs.starts_with("\"Err:");
    if (const auto* const text = std::get_if<Text>(&ours)) {
        std::string quoted = "\"";
        for (const char c : to_utf8(*text)) quoted += c == '"' ? "\"\"" : std::string(1, c);
        return theirs == quoted + "\"" || (text->empty() && theirs.empty());
    }
    const auto number = tarvik::number(from_utf8(theirs));
    const auto* const truth = std::get_if<bool>(&ours);
    const double mine = truth ? (*truth ? 1 : 0) : std::get<double>(ours);
    return number && std::abs(*number - mine) <= 1e-9 * std::max(1.0, std::abs(mine));
}

} // namespace

// The same random formulas over the same random cells, calculated here and by LibreOffice.
TEST(LibreOffice, GivesTheSameResults)
{
    if (std::system("command -v soffice >/dev/null 2>&1") != 0) GTEST_SKIP() << "LibreOffice is not installed";
    const char* const wanted = std::getenv("TARVIK_SEED");
    RandomFormulas random(wanted ? static_cast<unsigned>(std::atoi(wanted)) : 1U);
    CellsInMemory cells({U"Results", U"Data"});
    const std::string data = lay_data(cells, random);
    std::vector<std::string> formulas;
    std::string rows;
    for (int row = 1; row <= count; ++row) {
        const std::string place = "A" + std::to_string(row);
        formulas.push_back(random.formula(row));
        cells.set_formula(place, formulas.back());
        rows += "<row r=\"" + std::to_string(row) + "\"><c r=\"" + place + "\" s=\"1\"><f>" + escaped(formulas.back()) +
                "</f></c></row>";
    }
    const TemporaryFolder folder;
    const auto file = folder.path() / "random.xlsx";
    std::ofstream(file, std::ios::binary) << workbook(rows, data);
    const std::string command = "cd '" + folder.path().string() + "' && soffice -env:UserInstallation=file://" +
                                folder.path().string() +
                                "/profile --headless --convert-to 'csv:Text - txt - csv "
                                "(StarCalc):44,34,76,1,,1033,true,true' random.xlsx >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const auto theirs = lines_of(folder.path() / "random.csv");
    ASSERT_EQ(theirs.size(), static_cast<std::size_t>(count));
    int not_calculated = 0;
    for (int row = 1; row <= count; ++row) {
        const auto i = static_cast<std::size_t>(row) - 1;
        try {
            const Value ours = cells.result({1, {row, 1}});
            EXPECT_TRUE(agrees(ours, theirs[i]))
                << "A" << row << ": =" << formulas[i] << "\n  LibreOffice: " << theirs[i] << "\n  ours: "
                << (std::holds_alternative<CellError>(ours) ? "an error"
                                                            : to_utf8(std::get<Text>(calculation::to_text(ours))));
        } catch (const calculation::CannotCalculate&) {
            ++not_calculated;
        }
    }
    EXPECT_LE(not_calculated, count / 20);
}

} // namespace tarvik::test

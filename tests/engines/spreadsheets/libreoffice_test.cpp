#include "tests/engines/spreadsheets/workbook_parts.h"
#include "tests/support/test_program.h"

#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/workbook_model.h"

#include <cmath>
#include <cstdlib>
#include <fstream>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace tarvik::test {

namespace {

using calculation::CellError;
using calculation::Value;
using ooxml::escaped;

constexpr int count = 2'000;

std::vector<std::string> patterns(const std::string& all)
{
    std::vector<std::string> patterns;
    std::istringstream stream(all);
    for (std::string pattern; std::getline(stream >> std::ws, pattern, ';');) patterns.push_back(pattern);
    return patterns;
}

// In a pattern N stands for a number, W for a whole one from 0 to 9, T for a text, L for a truth value, @ for a row of
// the data, R for an area of numbers, K for a criterion; each behind "~".
const auto plain_numbers = patterns(R"(~W; ~W.~W~W; Data!A~@; Data!B~@; Data!$E$~@; -~W)");
const auto numbers = patterns(
    R"(~N+~N; ~N-~N; ~N*~N; (~N)/(~W+1); ~N/~W; -~N; (~N)%; 2^~W; -2^2; ABS(~N); ROUND(~N,~W-2); ROUNDUP(Data!B~@,1);
    ROUNDDOWN(Data!B~@,1); INT(Data!B~@); TRUNC(Data!B~@,1); MOD(Data!A~@,~W-4); SIGN(~N); SQRT(~N); EXP(~W);
    LN(~W); LOG10(~W+1); POWER(~W+1,~W); CEILING(Data!B~@,0.5); FLOOR(ABS(Data!B~@),0.5); EVEN(~W); ODD(~W);
    FACT(~W); COMBIN(9,~W); SUM(~R,~N); AVERAGE(~R); COUNT(~R,Data!D1:D~@); COUNTA(Data!D1:D~@);
    COUNTBLANK(Data!D1:D~@); MAX(~R,~N); MIN(~R); LARGE(~R,~W); SMALL(~R,1); RANK(Data!A~@,Data!A$1:A$20);
    MEDIAN(~R); STDEV(~R); VARP(~R); PRODUCT(Data!B1:B4); SUBTOTAL(9,~R); SUMSQ(Data!A1:A~@); PERCENTILE(~R,0.~W);
    SUMPRODUCT(Data!A1:A9,Data!B1:B9); SUMPRODUCT((Data!A1:A20>~W)*Data!B1:B20); COUNTIF(Data!A1:A20,~K);
    COUNTIF(Data!C1:C20,~T); COUNTIF(Data!C1:C20,"*a*"); SUMIF(Data!A1:A20,~K,Data!B1:B20);
    SUMIFS(Data!B1:B20,Data!A1:A20,~K,Data!C1:C20,"<>b"); COUNTIFS(Data!A:A,~K,Data!A:A,"<9");
    AVERAGEIF(Data!A1:A20,~K,Data!B1:B20); VLOOKUP(Data!A~@,Data!A1:E20,2,FALSE); VLOOKUP(~W*10,Data!F1:F20,1);
    MATCH(~W*10,Data!F1:F20); MATCH(Data!C~@,Data!C1:C20,0); INDEX(Data!A1:B20,~W+1,2);
    SUM(OFFSET(Data!A1,~W,0,3,1)); INDIRECT("Data!A"&~W+1); CHOOSE(~W,10,20,30); ROW(Data!A~@); ROWS(Data!A1:A~@);
    LEN(~T); FIND("a",~T); SEARCH("?a",~T); VALUE("~W.~W"); N(~L); IF(~L,~N,~N); IFERROR(~N/~W,~N); YEAR(Data!E~@);
    MONTH(Data!E~@); DAY(Data!E~@); WEEKDAY(Data!E~@,2); DATE(2000+~W,~W,~W); EDATE(Data!E~@,~W);
    EOMONTH(Data!E~@,-~W); DATEDIF(DATE(2001,~W+1,5),Data!E~@,"m"); _xlfn.DAYS(Data!E~@,Data!E~@);
    NETWORKDAYS(Data!E~@,Data!E~@); WEEKNUM(Data!E~@); HOUR(Data!E~@+0.~W~W); TIME(~W,~W,~W); PMT(0.0~W,12,1000);
    FV(0.01,~W,-5); NPV(0.05,~R))");
const auto plain_texts = patterns(R"(""; "a"; "Bc a"; "表"; Data!C~@; Data!C~@)");
const auto texts =
    patterns(R"(~T&~T; ~T&~W; Data!A~@&""; LEFT(~T,~W); RIGHT(~T,~W); MID(~T,~W+1,~W); UPPER(~T); LOWER(~T); PROPER(~T);
    TRIM(" "&~T&"  x"); SUBSTITUTE(~T,"a","-"); REPLACE(~T,~W+1,1,"#"); REPT(~T,~W); IF(~L,~T,~T);
    TEXT(Data!B~@,"0.00"); TEXT(Data!A~@,"#,##0"); TEXT(Data!E~@,"yyyy-mm-dd"); TEXT(Data!B~@,"0%");
    TEXT(0.~W~W,"hh:mm:ss"); CONCATENATE(~T,~T); _xlfn.TEXTJOIN(",",TRUE,Data!C1:C~@); CHAR(65+~W);
    FIXED(Data!B~@*1000,1); ADDRESS(~W+1,~W+1); INDEX(Data!C1:C20,~W+1); T(~T);
    IFERROR(INDEX(Data!C1:C20,MATCH(~W,Data!A1:A20,0)),"none"))");
const auto truths =
    patterns(R"(Data!A~@>~W; Data!A~@=Data!A~@; ~T=~T; ~T<>Data!C~@; AND(~L,~L); OR(~L,~L); NOT(~L); ISNUMBER(Data!D~@);
    ISTEXT(Data!D~@); ISBLANK(Data!D~@); ISERROR(~N); ISNA(~N); EXACT(~T,~T); _xlfn.XOR(~L,~L); TRUE; 1>2;
    ISEVEN(~W))");
const auto areas = patterns(R"(Data!A1:A~@; Data!B1:B~@; Data!D1:D~@; Data!A:A; Data!A1:B9; Data!F3:F~@)");
const auto criteria = patterns(R"(~W; ">~W"; "<=~W"; "<>~W"; "=~W"; Data!A~@)");

/// Makes formulas over the sheet "Data": A whole numbers, B amounts, C texts, D of all kinds, E days, F rising numbers,
/// in rows 1 to rows_of_data; and over earlier results in column A of their own sheet. Only what spreadsheet
/// applications agree on.
class RandomFormulas {
public:
    static constexpr int rows_of_data = 20;

    explicit RandomFormulas(unsigned seed) : random_(seed) {}

    /// The formula of that row.
    std::string formula(int row)
    {
        row_ = row;
        left_ = 6;
        return expanded(one_of({"~N", "~N", "~N", "~T", "~L"}));
    }
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

private:
    std::string expanded(const std::string& pattern)
    {
        std::string result;
        for (std::size_t i = 0; i < pattern.size(); ++i) {
            if (pattern[i] != '~') {
                result += pattern[i];
                continue;
            }
            const bool goes_on = left_-- > 0;
            switch (pattern[++i]) {
            case 'N':
                result += row_ > 10 && below(9) == 0 ? "A" + std::to_string(1 + below(row_ - 1))
                                                     : expanded(one_of(goes_on ? numbers : plain_numbers));
                break;
            case 'T': result += expanded(one_of(goes_on ? texts : plain_texts)); break;
            case 'L': result += goes_on ? expanded(one_of(truths)) : "FALSE"; break;
            case 'R': result += expanded(one_of(areas)); break;
            case 'K': result += expanded(one_of(criteria)); break;
            case 'W': result += std::to_string(below(10)); break;
            default: result += std::to_string(1 + below(rows_of_data)); break;
            }
        }
        return result;
    }
    const std::string& one_of(const std::vector<std::string>& patterns)
    {
        return patterns[static_cast<std::size_t>(below(static_cast<int>(patterns.size())))];
    }

    std::mt19937 random_;
    int row_ = 1;
    int left_ = 0; // patterns that may still be put in
};

std::string cell_of(std::string_view place, const Value& value)
{
    const std::string text = escaped(to_utf8(std::get<Text>(calculation::to_text(value))));
    const std::string begin = "<c r=\"" + std::string(place) + "\"";
    if (std::holds_alternative<Text>(value)) return begin + " t=\"inlineStr\"><is><t>" + text + "</t></is></c>";
    if (std::holds_alternative<bool>(value))
        return begin + " t=\"b\"><v>" + (std::get<bool>(value) ? "1" : "0") + "</v></c>";
    return begin + "><v>" + text + "</v></c>";
}

// The rows of the data's sheet.
std::string data_rows(RandomFormulas& random)
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
            rows += cell_of(ooxml::place_name({row, column}), value);
        }
        rows += "</row>";
    }
    return rows;
}

// All results are shown with 17 digits and not as what they are: a date, an amount, a part in a hundred.
std::string workbook(const std::string& formulas, const std::string& data)
{
    Parts parts = simple_parts(formulas);
    edit_part(parts, "xl/workbook.xml", "第二张", "Data");
    edit_part(parts, "xl/styles.xml", "0.00&quot;元&quot;", "0.0000000000000000E+00");
    edit_part(parts, "xl/worksheets/sheet2.xml", "<row r=\"1\"><c r=\"A1\"><f>第一张!B2*2</f><v>84</v></c></row>",
              data);
    return make_package(parts);
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
    const std::string data = data_rows(random);
    std::vector<std::string> formulas;
    std::string rows;
    for (int row = 1; row <= count; ++row) {
        const std::string place = "A" + std::to_string(row);
        formulas.push_back(random.formula(row));
        rows += "<row r=\"" + std::to_string(row) + "\"><c r=\"" + place + "\" s=\"1\"><f>" + escaped(formulas.back()) +
                "</f></c></row>";
    }
    const TemporaryFolder folder;
    const auto file = folder.path() / "random.xlsx";
    const auto bytes = workbook(rows, data);
    std::ofstream(file, std::ios::binary) << bytes;
    const std::string command = "cd '" + folder.path().string() + "' && soffice -env:UserInstallation=file://" +
                                folder.path().string() +
                                "/profile --headless --convert-to 'csv:Text - txt - csv "
                                "(StarCalc):44,34,76,1,,1033,true,true' random.xlsx >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const auto theirs = lines_of(folder.path() / "random.csv");
    ASSERT_EQ(theirs.size(), static_cast<std::size_t>(count));
    ooxml::WorkbookModel model(std::make_shared<const ooxml::Package>(bytes));
    auto& recalculation = model.recalculation();
    recalculation.update_all();
    for (int row = 1; row <= count; ++row) {
        if (recalculation.failed().contains(recalculation.index().find(1, ooxml::Place{row, 1}))) continue;
        const auto i = static_cast<std::size_t>(row) - 1;
        const auto ours = model.sheet(1).value({row, 1});
        EXPECT_TRUE(agrees(ours, theirs[i])) << "A" << row << ": =" << formulas[i] << "\n  LibreOffice: " << theirs[i]
                                             << "\n  ours: " << to_utf8(model.sheet(1).text({row, 1}));
    }
    EXPECT_LE(recalculation.failed().size(), count / 20U);
}

} // namespace tarvik::test

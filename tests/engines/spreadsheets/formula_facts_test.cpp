#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/workbook_model.h"
#include "tests/engines/spreadsheets/workbook_parts.h"

#include <gtest/gtest.h>

namespace tarvik::test {

namespace {

const std::string sheet1 = "xl/worksheets/sheet1.xml";
const std::string book = "xl/workbook.xml";
const std::string links = "xl/_rels/workbook.xml.rels";

Parts sample_parts()
{
    const auto text = [](const char* place, const char* held) {
        return "<c r=\"" + std::string(place) + "\" t=\"inlineStr\"><is><t>" + held + "</t></is></c>";
    };
    const auto number = [](const char* place, const char* held) {
        return "<c r=\"" + std::string(place) + "\"><v>" + held + "</v></c>";
    };
    auto parts = simple_parts("<row r=\"1\">" + number("A1", "10") + text("B1", "apple") + number("C1", "1") +
                              "<c r=\"D1\" t=\"e\"><v>#N/A</v></c>" + number("H1", "8") + "</row><row r=\"2\">" +
                              number("A2", "20") + text("B2", "Pear") + number("C2", "2") + "</row><row r=\"3\">" +
                              number("A3", "30") + text("B3", "fig") + number("C3", "2") + "</row><row r=\"4\">" +
                              text("A4", "x") + text("B4", "5") + number("C4", "5") +
                              "</row><row r=\"5\"><c r=\"A5\" t=\"b\"><v>1</v></c></row><row r=\"6\">" +
                              text("B6", "") + "</row><row r=\"20\">" + number("E20", "77") + "<c r=\"H20\"/></row>");
    edit_part(parts, book, "第一张\"", "Sheet1\"");
    edit_part(parts, book, "第二张", "Other one");
    edit_part(parts, book, "</sheets>", "<sheet name=\"Third\" sheetId=\"3\" r:id=\"rId9\"/></sheets>");
    edit_part(parts, book, "</definedNames>",
              "<definedName name=\"rate\">0.25</definedName><definedName name=\"loop\">loop+1</definedName>"
              "<definedName name=\"list\">Sheet1!$A$1:$A$3</definedName></definedNames>");
    edit_part(parts, links, "</Relationships>",
              "<Relationship Id=\"rId9\" Type=\"t/worksheet\" Target=\"worksheets/sheet3.xml\"/></Relationships>");
    edit_part(parts, "xl/worksheets/sheet2.xml", "<f>第一张!B2*2</f><v>84</v>", "<v>200</v>");
    set_part(parts, "xl/worksheets/sheet3.xml",
             "<worksheet><sheetData><row r=\"1\">" + number("A1", "300") + "</row></sheetData></worksheet>");
    set_part(parts, "xl/worksheets/_rels/sheet1.xml.rels",
             "<Relationships><Relationship Id=\"r\" Type=\"t/table\" Target=\"../t.xml\"/></Relationships>");
    set_part(parts, "xl/t.xml",
             "<table ref=\"A1:C4\" displayName=\"Goods\"><tableColumns><tableColumn name=\"No\"/>"
             "<tableColumn name=\"Name #1\"/><tableColumn name=\"Count\"/></tableColumns></table>");
    return parts;
}

// The formula's result in H20 as a cell of an English spreadsheet shows it; what is not calculated in angle brackets.
std::string shown(Parts parts, const std::string& formula, const std::string& attributes = {})
{
    edit_part(parts, sheet1, "<c r=\"H20\"/>",
              "<c r=\"H20\"><f" + attributes + ">" + ooxml::escaped(formula) + "</f></c>");
    const auto now = [] { return CalendarTime{2026, 11, 25, 18, 30, 0}; };
    ooxml::WorkbookModel model(std::make_shared<const ooxml::Package>(make_package(parts)), {now});
    auto& recalculation = model.recalculation();
    recalculation.update_all();
    const ooxml::Place place{20, 8};
    const auto failed = recalculation.failed().find(recalculation.index().find(1, place));
    if (failed != recalculation.failed().end()) return "<" + failed->second + ">";
    const auto value = model.sheet(1).value(place);
    if (const auto* const error = std::get_if<calculation::CellError>(&value))
        return to_utf8(calculation::error_text(*error));
    return to_utf8(std::get<Text>(calculation::to_text(value)));
}

struct Fact {
    const char* formula;
    const char* result;
};

void check(std::initializer_list<Fact> facts, const Parts& parts = sample_parts())
{
    for (const auto& [formula, result] : facts) EXPECT_EQ(shown(parts, formula), result) << formula;
}

} // namespace

TEST(Facts, Operators)
{
    check({{"-2^2", "4"},
           {"-A1%", "-0.1"},
           {"1+2*3&4", "74"},
           {"\"a\"=\"A\"", "TRUE"},
           {"1<\"a\"", "TRUE"},
           {"\"z\"<FALSE", "TRUE"},
           {"\"zoo\">\"year\"", "TRUE"},
           {"CLEAN(\"a b\"&CHAR(9))", "a b"},
           {"AGGREGATE(14,4,A1:A3,1)", "30"},
           {"COUNTIFS(B1:B3,\"*p*\",B1:B3,\"*e*\")", "2"},
           {"Z1=0", "TRUE"},
           {"Z1=\"\"", "TRUE"},
           {"Z1=FALSE", "TRUE"},
           {"\"1,234.5\"*2", "2469"},
           {"\"x\"+1", "#VALUE!"},
           {"0^0", "#NUM!"},
           {"0.1+0.2=0.3", "TRUE"},
           {"1.1-1-0.1>0", "TRUE"},
           {"0.5-0.4-0.1", "0"},
           {"1/3&\"\"", "0.333333333333333"},
           {"1E15&\"\"", "1E+15"},
           {"rate*4", "1"},
           {"1 000", "<syntax>"},
           {"SUM(", "<syntax>"},
           {"NOSUCH(1)", "<NOSUCH>"},
           {"nosuch", "#NAME?"}});
}

TEST(Facts, References)
{
    check({{"SUM(A:A)", "60"},
           {"SUM(2:3)", "54"},
           {"E:E", "77"},
           {"E1:E19", "#VALUE!"},
           {"H:H 1:1", "8"},
           {"A1:A2 B1:B2", "#NULL!"},
           {"SUM((A1,A3))", "40"},
           {"SUM(A1:C2 A2:B9)", "20"},
           {"SUM('Other one:Third'!A1)", "500"},
           {"[1]Sheet1!A1", "<external workbook>"},
           {"SUM(list)", "60"},
           {"#REF!+1", "#REF!"},
           {"IF(TRUE,1,[1]Sheet1!A1)", "1"},
           {"SUM(Goods[Count])", "9"},
           {"SUM(goods[[#All],[No]:[Count]])", "70"},
           {"Goods[[#Headers],[Name '#1]]", "apple"},
           {"Goods[[#This Row],[No]]", "#VALUE!"},
           {"SUM(A1:INDEX(A:A,2))", "30"},
           {"SUM(OFFSET(A1,1,0,2))", "50"},
           {"SUM(INDIRECT(\"list\"))", "60"},
           {"ADDRESS(2,3,4,TRUE,\"a b\")", "'a b'!C2"},
           {"ROWS(A:A)", "1048576"}});
}

TEST(Facts, Rounding)
{
    check({
        {"ROUND(2.675,2)", "2.68"},
        {"ROUND(1.005,2)", "1.01"},
        {"ROUNDUP(1.01,1)", "1.1"},
        {"CEILING(-2.5,2)", "-2"},
        {"FLOOR(-2.5,2)", "-4"},
        {"CEILING(2.5,-2)", "#NUM!"},
        {"SIN(PI())", "1.22514845490862E-16"},
    });
}

TEST(Facts, Texts)
{
    check({{"LEFT(\"abc\")", "a"},
           {"LEFT(\"abc\",)", ""},
           {"MID(\"abc\",0,1)", "#VALUE!"},
           {"SUBSTITUTE(\"aXbX\",\"X\",\"-\",2)", "aXb-"},
           {"SEARCH(\"~*\",\"a*\")", "2"},
           {"PROPER(\"o'neil 2nd\")", "O'Neil 2Nd"},
           {"TEXTJOIN(\",\",TRUE,B1:B6)", "apple,Pear,fig,5"},
           {"REPT(\"ab\",20000)", "#VALUE!"},
           {"VALUE(\"2020-01-05\")", "43835"},
           {"VALUE(\"6:30 PM\")*24", "18.5"},
           {"VALUE(\"1/2/2020\")", "<date as a text>"},
           {"TEXT(0.256,\"0.0%\")", "25.6%"},
           {"TEXT(43835.75,\"yyyy年m月d日 hh:mm\")", "2020年1月5日 18:00"},
           {"TEXT(43835.75,\"h:mm AM/PM\")", "6:00 PM"},
           {"TEXT(1.5,\"[h]:mm:ss\")", "36:00:00"},
           {"TEXT(-5,\"0;(0);-\")", "(5)"},
           {"TEXT(\"a\",\"0;0;0;@@\")", "aa"},
           {"TEXT(123456789,\"000-0000\")", "12345-6789"},
           {"TEXT(1234567,\"0.0,,\")", "1.2"},
           {"TEXT(43835,\"ddd, mmm d\")", "Sun, Jan 5"},
           {"TEXT(0.5,\"# ?/?\")", "<number format with a fraction>"}});
}

TEST(Facts, Dates)
{
    check({{"DATE(1900,3,1)", "61"},
           {"DATE(1900,2,29)", "60"},
           {"DAY(60)", "29"},
           {"EDATE(DATE(2020,1,31),1)", "43890"},
           {"YEAR(\"29年1月5日\")", "2029"},
           {"YEAR(\"30年1月5日\")", "1930"},
           {"DATEDIF(DATE(2020,1,31),DATE(2021,3,1),\"ym\")", "1"},
           {"DAYS360(DATE(2020,1,31),DATE(2020,12,31))", "330"},
           {"WORKDAY(43831,10)", "43845"},
           {"WEEKNUM(DATE(2012,3,9),2)", "11"},
           {"ISOWEEKNUM(DATE(2021,1,3))", "53"},
           {"YEAR(-1)", "#NUM!"}});
    auto from_1904 = sample_parts();
    edit_part(from_1904, book, "<workbookPr/>", "<workbookPr date1904=\"1\"/>");
    check({{"DATE(2020,1,5)", "42373"}, {"TEXT(42373,\"yyyy-mm-dd ddd\")", "2020-01-05 Sun"}}, from_1904);
}

TEST(Facts, Lookups)
{
    check({{"VLOOKUP(25,A1:C3,3)", "2"},
           {"VLOOKUP(5,A1:C3,2)", "#N/A"},
           {"VLOOKUP(10,A1:C3,4,0)", "#REF!"},
           {"MATCH(\"P*\",B1:B4,0)", "2"},
           {"MATCH(2,C1:C4)", "3"},
           {"LOOKUP(2,1/(C1:C4=2),A1:A4)", "30"},
           {"SUM(INDEX(A1:C3,0,1))", "60"},
           {"XLOOKUP(\"zz\",B1:B4,A1:A4,\"none\")", "none"},
           {"MATCH(1,INDEX((A1:A3=20)*(C1:C3=2),0),0)", "2"},
           {"VLOOKUP(\"fig\",CHOOSE({1,2},B1:B3,A1:A3),2,0)", "30"}});
}

TEST(Facts, Counting)
{
    check({{"COUNT(A1:A6,\"4\",TRUE)", "5"},
           {"COUNTA(A1:B6)", "10"},
           {"COUNTBLANK(A1:B6)", "3"},
           {"COUNTIF(B1:B6,\"<>apple\")", "5"},
           {"COUNTIF(B1:B6,\"\")", "2"},
           {"COUNTIF(B1:B6,\"=\")", "1"},
           {"COUNTIF(D1:D9,#N/A)", "1"},
           {"SUMIF(B1:B3,\"*p*\",A1)", "30"},
           {"COUNTIFS(A1:A9,\"\",B1:B9,\"\")", "4"},
           {"SUMPRODUCT((A:A=\"\")*1)", "1048571"},
           {"SUM(COUNTIF(B1:B4,{\"fig\",\"apple\"}))", "2"},
           {"AND(A1:A5)", "TRUE"},
           {"SUM(A1:A5,TRUE)", "61"},
           {"MAX(Z1:Z9)", "0"},
           {"AGGREGATE(9,6,A1:D1)", "11"}});
    auto parts = sample_parts();
    const std::string is_array = " t=\"array\" ref=\"H20\"";
    EXPECT_EQ(shown(parts, "SUM(IF(C1:C4=2,A1:A4))", is_array), "50");
    EXPECT_EQ(shown(parts, "MAX(LEN(B1:B3))", is_array), "5");
    edit_part(parts, sheet1, "<row r=\"2\">", "<row r=\"2\" hidden=\"1\">");
    edit_part(parts, sheet1, "<c r=\"A4\" t=\"inlineStr\"><is><t>x</t></is></c>",
              "<c r=\"A4\"><f>SUBTOTAL(9,A1:A3)</f></c>");
    check({{"A4", "60"}, {"SUBTOTAL(9,A1:A4)", "60"}, {"SUBTOTAL(109,A1:A4)", "40"}}, parts);
}

TEST(Facts, Finance)
{
    check({{"ROUND(PMT(0.08/12,10,10000),2)", "-1037.03"},
           {"ROUND(FV(0.06/12,10,-200,-500,1),2)", "2581.4"},
           {"ROUND(PV(0.08/12,240,500),2)", "-59777.15"},
           {"ROUND(IRR({-70000,12000,15000,18000,21000,26000}),6)", "0.086631"},
           {"ROUND(RATE(48,-200,8000),6)", "0.007701"},
           {"ROUND(NPER(0.12/12,-100,-1000,10000,1),4)", "59.6739"}});
}

// Formulas that would take the stack or the memory, were they not bounded.
TEST(Facts, HostileFormulas)
{
    const auto repeated_around = [](int depth, char open, char close) {
        const auto count = static_cast<std::size_t>(depth);
        return std::string(count, open) + "1" + std::string(count, close);
    };
    const auto parts = sample_parts();
    EXPECT_EQ(shown(parts, repeated_around(60, '(', ')')), "1");
    EXPECT_EQ(shown(parts, repeated_around(30'000, '(', ')')), "<nesting>");
    EXPECT_EQ(shown(parts, repeated_around(30'000, '-', '%')), "<nesting>");
    EXPECT_EQ(shown(parts, "1" + std::string(30'000, '%')), "<nesting>");
    EXPECT_EQ(shown(parts, "1" + repeated("+1", 20'000)), "20001");
    check({{"SUMPRODUCT((A:C=B1:B1048576)*1)", "<size of an array>"},
           {"SUMPRODUCT(LEN(REPT(\"a\",32767+ROW(A:A)*0)))", "<too much work>"},
           {"SUMPRODUCT(LEN(REPT(\"a\",60+ROW(1:700000)*0)))", "42000000"},
           {"SUMPRODUCT(COMBIN(999999,400000+ROW(A:A)/4))", "#NUM!"},
           {"SUMPRODUCT(SEARCH(\"a*b\",REPT(\"a\",32767),ROW(1:999)))", "#VALUE!"},
           {"SEARCH(\"a*a?b\",\"xaaab\")", "2"},
           {"SUM(A1:XFD19)", "#N/A"},
           {"loop", "<nesting>"}});
}

} // namespace tarvik::test

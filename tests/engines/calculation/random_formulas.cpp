#include "tests/engines/calculation/random_formulas.h"

namespace tarvik::test {

namespace {

// In a pattern N stands for a number, W for a whole one from 0 to 9, T for a text, L for a truth value, @ for a row of
// the data, R for an area of numbers, K for a criterion; each behind "~".
const std::vector<std::string> plain_numbers{"~W", "~W.~W~W", "Data!A~@", "Data!B~@", "Data!$E$~@", "-~W"};
const std::vector<std::string> numbers{"~N+~N",
                                       "~N-~N",
                                       "~N*~N",
                                       "(~N)/(~W+1)",
                                       "~N/~W",
                                       "-~N",
                                       "(~N)%",
                                       "2^~W",
                                       "-2^2",
                                       "ABS(~N)",
                                       "ROUND(~N,~W-2)",
                                       "ROUNDUP(Data!B~@,1)",
                                       "ROUNDDOWN(Data!B~@,1)",
                                       "INT(Data!B~@)",
                                       "TRUNC(Data!B~@,1)",
                                       "MOD(Data!A~@,~W-4)",
                                       "SIGN(~N)",
                                       "SQRT(~N)",
                                       "EXP(~W)",
                                       "LN(~W)",
                                       "LOG10(~W+1)",
                                       "POWER(~W+1,~W)",
                                       "CEILING(Data!B~@,0.5)",
                                       "FLOOR(ABS(Data!B~@),0.5)",
                                       "EVEN(~W)",
                                       "ODD(~W)",
                                       "FACT(~W)",
                                       "COMBIN(9,~W)",
                                       "SUM(~R,~N)",
                                       "AVERAGE(~R)",
                                       "COUNT(~R,Data!D1:D~@)",
                                       "COUNTA(Data!D1:D~@)",
                                       "COUNTBLANK(Data!D1:D~@)",
                                       "MAX(~R,~N)",
                                       "MIN(~R)",
                                       "LARGE(~R,~W)",
                                       "SMALL(~R,1)",
                                       "RANK(Data!A~@,Data!A$1:A$20)",
                                       "MEDIAN(~R)",
                                       "STDEV(~R)",
                                       "VARP(~R)",
                                       "PRODUCT(Data!B1:B4)",
                                       "SUBTOTAL(9,~R)",
                                       "SUMSQ(Data!A1:A~@)",
                                       "PERCENTILE(~R,0.~W)",
                                       "SUMPRODUCT(Data!A1:A9,Data!B1:B9)",
                                       "SUMPRODUCT((Data!A1:A20>~W)*Data!B1:B20)",
                                       "COUNTIF(Data!A1:A20,~K)",
                                       "COUNTIF(Data!C1:C20,~T)",
                                       "COUNTIF(Data!C1:C20,\"*a*\")",
                                       "SUMIF(Data!A1:A20,~K,Data!B1:B20)",
                                       "SUMIFS(Data!B1:B20,Data!A1:A20,~K,Data!C1:C20,\"<>b\")",
                                       "COUNTIFS(Data!A:A,~K,Data!A:A,\"<9\")",
                                       "AVERAGEIF(Data!A1:A20,~K,Data!B1:B20)",
                                       "VLOOKUP(Data!A~@,Data!A1:E20,2,FALSE)",
                                       "VLOOKUP(~W*10,Data!F1:F20,1)",
                                       "MATCH(~W*10,Data!F1:F20)",
                                       "MATCH(Data!C~@,Data!C1:C20,0)",
                                       "INDEX(Data!A1:B20,~W+1,2)",
                                       "SUM(OFFSET(Data!A1,~W,0,3,1))",
                                       "INDIRECT(\"Data!A\"&~W+1)",
                                       "CHOOSE(~W,10,20,30)",
                                       "ROW(Data!A~@)",
                                       "ROWS(Data!A1:A~@)",
                                       "LEN(~T)",
                                       "FIND(\"a\",~T)",
                                       "SEARCH(\"?a\",~T)",
                                       "VALUE(\"~W.~W\")",
                                       "N(~L)",
                                       "IF(~L,~N,~N)",
                                       "IFERROR(~N/~W,~N)",
                                       "YEAR(Data!E~@)",
                                       "MONTH(Data!E~@)",
                                       "DAY(Data!E~@)",
                                       "WEEKDAY(Data!E~@,2)",
                                       "DATE(2000+~W,~W,~W)",
                                       "EDATE(Data!E~@,~W)",
                                       "EOMONTH(Data!E~@,-~W)",
                                       "DATEDIF(DATE(2001,~W+1,5),Data!E~@,\"m\")",
                                       "_xlfn.DAYS(Data!E~@,Data!E~@)",
                                       "NETWORKDAYS(Data!E~@,Data!E~@)",
                                       "WEEKNUM(Data!E~@)",
                                       "HOUR(Data!E~@+0.~W~W)",
                                       "TIME(~W,~W,~W)",
                                       "PMT(0.0~W,12,1000)",
                                       "FV(0.01,~W,-5)",
                                       "NPV(0.05,~R)"};
const std::vector<std::string> plain_texts{"\"\"", "\"a\"", "\"Bc a\"", "\"表\"", "Data!C~@", "Data!C~@"};
const std::vector<std::string> texts{"~T&~T",
                                     "~T&~W",
                                     "Data!A~@&\"\"",
                                     "LEFT(~T,~W)",
                                     "RIGHT(~T,~W)",
                                     "MID(~T,~W+1,~W)",
                                     "UPPER(~T)",
                                     "LOWER(~T)",
                                     "PROPER(~T)",
                                     "TRIM(\" \"&~T&\"  x\")",
                                     "SUBSTITUTE(~T,\"a\",\"-\")",
                                     "REPLACE(~T,~W+1,1,\"#\")",
                                     "REPT(~T,~W)",
                                     "IF(~L,~T,~T)",
                                     "TEXT(Data!B~@,\"0.00\")",
                                     "TEXT(Data!A~@,\"#,##0\")",
                                     "TEXT(Data!E~@,\"yyyy-mm-dd\")",
                                     "TEXT(Data!B~@,\"0%\")",
                                     "TEXT(0.~W~W,\"hh:mm:ss\")",
                                     "CONCATENATE(~T,~T)",
                                     "_xlfn.TEXTJOIN(\",\",TRUE,Data!C1:C~@)",
                                     "CHAR(65+~W)",
                                     "FIXED(Data!B~@*1000,1)",
                                     "ADDRESS(~W+1,~W+1)",
                                     "INDEX(Data!C1:C20,~W+1)",
                                     "T(~T)",
                                     "IFERROR(INDEX(Data!C1:C20,MATCH(~W,Data!A1:A20,0)),\"none\")"};
const std::vector<std::string> truths{"Data!A~@>~W",      "Data!A~@=Data!A~@", "~T=~T",       "~T<>Data!C~@",
                                      "AND(~L,~L)",       "OR(~L,~L)",         "NOT(~L)",     "ISNUMBER(Data!D~@)",
                                      "ISTEXT(Data!D~@)", "ISBLANK(Data!D~@)", "ISERROR(~N)", "ISNA(~N)",
                                      "EXACT(~T,~T)",     "_xlfn.XOR(~L,~L)",  "TRUE",        "1>2",
                                      "ISEVEN(~W)"};
const std::vector<std::string> areas{"Data!A1:A~@", "Data!B1:B~@", "Data!D1:D~@",
                                     "Data!A:A",    "Data!A1:B9",  "Data!F3:F~@"};
const std::vector<std::string> criteria{"~W", "\">~W\"", "\"<=~W\"", "\"<>~W\"", "\"=~W\"", "Data!A~@"};

} // namespace

std::string RandomFormulas::formula(int row)
{
    row_ = row;
    left_ = 6;
    return expanded(one_of({"~N", "~N", "~N", "~T", "~L"}));
}

std::string RandomFormulas::expanded(const std::string& pattern)
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

} // namespace tarvik::test

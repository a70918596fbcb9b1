#pragma once

#include "tests/support/report_desk.h"

namespace tarvik::test {

/// How many fields the records of the service reports have.
inline constexpr std::size_t wide = 40;

inline Text one_number(const Text& text)
{
    const std::size_t slash = text.find(U'/');
    if (slash == Text::npos) return text;
    return text[0] == U'0' ? text.substr(slash + 1) : text.substr(0, slash);
}

inline Text device_name(int number)
{
    return U"DeV-" + number_text(100 + number);
}

/// Texts and numbers in places that no command writes, and in some that they do.
inline Cells template_cells()
{
    Cells cells;
    for (int row = 1; row <= 30; ++row)
        for (const int column : {row % 9 + 1, row % 4 + 3, 12})
            cells[{row, column}] = U"t" + number_text(row * 100 + column);
    cells[{11, 1}] = 5.0;
    cells[{18, 2}] = U"kept where the bill has nothing to say";
    return cells;
}

/// A report and its orders, on which the service bills, lists and summaries are made.
class ServiceDesk : public ReportDesk {
protected:
    Report report, orders;

    static Record device(const Text& number)
    {
        Record record = numbered_record(wide);
        record[0] = U"自制品";
        record[14] = number;
        return record;
    }
    void lay_out(const std::string& name)
    {
        write_report(name, report);
        write_report("3137.txt", orders);
        open_report(report);
    }
};

} // namespace tarvik::test

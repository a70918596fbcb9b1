#include "dockets/docket_parts.h"

#include "columns/columns.h"
#include "mainwindow/installation_files.h"
#include "runs/blanking.h"
#include "runs/keyed_scans.h"

namespace tarvik {

namespace {

constexpr int marked_list = 68; // a longer one is marked in the file's name
constexpr std::u32string_view long_list_mark = U"陈默然";

} // namespace

Text docket_template(const Program& program)
{
    return installed(program, program.form1.partcount > longest_short_list ? files::long_docket : files::docket);
}

Text marked_for_length(const Program& program, Text name)
{
    if (program.form1.partcount > marked_list) name += long_list_mark;
    return name;
}

void write_counts(const Program& program, Worksheet& sheet)
{
    const Form1& form1 = program.form1;
    sheet.set_cell(10, 2, static_cast<double>(form1.allcount));
    sheet.set_cell(10, 5, static_cast<double>(form1.allcount - form1.partcount));
    sheet.set_cell(10, 7, static_cast<double>(form1.partcount));
}

void count_devices(Program& program, TextView key)
{
    program.form1.allcount = query2(program, key, true);
    program.form1.partcount = query2(program, key, false);
}

void prepare_docket(Program& program)
{
    devision1(program);
    excelce2(program);
}

} // namespace tarvik

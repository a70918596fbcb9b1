#include "columns/columns.h"

#include "calendar/calendar.h"
#include "columns/views.h"

#include <cmath>

namespace tarvik {

namespace {

struct Parameters {
    std::size_t a, b;
    double days;
};

/// Cells that the check writes anew: collected, so that they share one buffer.
class NewCells {
public:
    explicit NewCells(Table& table) : table_(table) {}

    void add(std::size_t row, std::size_t column, TextView text)
    {
        cells_.push_back({row, column, texts_.size(), text.size()});
        text.append_to(texts_);
    }
    void store()
    {
        if (cells_.empty()) return;
        const SharedBuffer buffer = make_buffer(texts_);
        table_.keep({buffer});
        for (const Cell& cell : cells_)
            table_.set_cell_view(cell.row, cell.column, buffer->view().substr(cell.start, cell.length));
    }

private:
    struct Cell {
        std::size_t row, column, start, length;
    };
    Table& table_;
    Text texts_;
    std::vector<Cell> cells_;
};

/// The date of a cell; "error" for one that is too short, which is reported. What stands behind the cell's first blank
/// goes for good.
Text normal_date(Program& program, NewCells& new_cells, std::size_t row, std::size_t column)
{
    Table& suf = program.module1.suf;
    const TextView cell = suf.cell(row, column), day = cell.substr(0, cell.find(U' '));
    if (day.size() < cell.size()) suf.set_cell_view(row, column, day);
    Text text = day.str();
    Text date = dsx(text);
    if (text.size() > day.size()) new_cells.add(row, column, text);
    if (date == U"error")
        tell(program, U"第 " + number_text(program.form1.daterow) + U"   行，时间格式字段长度异常，dan为:" +
                          number_text(day.size()) + U"  。");
    return date;
}

struct Findings {
    bool ended = false; ///< by a date that is too short
    bool any_earlier = false;
    RowList no_dates;
};

/// Adds the rows whose dates lie too far apart to the view.
Findings check_rows(Program& program, const Parameters& parameters, RowView& view)
{
    Form1& form1 = program.form1;
    const Table& suf = program.module1.suf;
    NewCells new_cells(program.module1.suf);
    Findings findings;
    const auto last = static_cast<std::size_t>(form1.curcount);
    for (std::size_t row = 0; row <= last && !findings.ended; ++row) {
        if (suf.cell(row, parameters.a).empty() || suf.cell(row, parameters.b).empty()) continue;
        form1.daterow = static_cast<int>(row);
        const Text first = normal_date(program, new_cells, row, parameters.a);
        const Text second = normal_date(program, new_cells, row, parameters.b);
        findings.ended = first == U"error" || second == U"error";
        if (findings.ended) continue;
        const auto first_day = day_of(first), second_day = day_of(second);
        if (!first_day || !second_day) {
            findings.no_dates.add(row, first_day ? second : first);
            continue;
        }
        findings.any_earlier |= *second_day < *first_day;
        form1.daydiff = std::fabs(*second_day - *first_day);
        if (form1.daydiff <= parameters.days) continue;
        form1.compcount += 1;
        view.add_row(program.module1.sufrow.line(row), U"        " + number_text(form1.daydiff));
    }
    new_cells.store();
    return findings;
}

} // namespace

void date_check(Program& program)
{
    Form1& form1 = program.form1;
    const Parameters parameters{box_column(program, 0), box_column(program, 1), box_number(program, 2)};
    tell(program,
         U"温情提示：\r\n参与时间格式比较的suF表的列次A为:" + number_text(parameters.a) +
             U"， \r\n参与时间格式比较的suF表的列次B为:" + number_text(parameters.b) +
             U"，\r\n时间格式比较的时间间隔为:" + number_text(parameters.days) + U"。",
         U"Tarvik  计算查寻 ");
    const auto view = std::make_shared<RowView>(program.module1.sufrow.buffers());
    const Findings findings = check_rows(program, parameters, *view);
    ScratchFile file(program, U"between3.txt");
    if (findings.ended) return file.write(*view);
    show_view(program, file, view);
    form1.number_box().set_text(number_text(form1.compcount));
    if (findings.any_earlier) tell(program, U"温情提示：后面的时间比前面的时间早！", U"Tarvik 计算", Icon::Information);
    if (findings.no_dates.count() > 0)
        tell(program, U" 请注意：\r\n以下各行的字段不是日期，已经略过：" + findings.no_dates.text());
}

} // namespace tarvik

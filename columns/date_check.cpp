#include "columns/comparisons.h"

#include "calendar/calendar.h"
#include "columns/boxes.h"
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

class DateCheck {
public:
    DateCheck(Program& program, Parameters parameters)
        : program_(program), parameters_(parameters), new_cells_(program.module1.suf),
          view_(std::make_shared<RowView>(program.module1.sufrow.buffers()))
    {
    }

    /// Gives false when a date of the row ends the check.
    bool check_row(std::size_t row)
    {
        const Table& suf = program_.module1.suf;
        const auto [a, b, days] = parameters_;
        if (suf.cell(row, a).empty() || suf.cell(row, b).empty()) return true;
        Text first_cell = cut_cell(row, a), second_cell = cut_cell(row, b);
        program_.form1.daterow = static_cast<int>(row);
        const Text first = normal_date(row, a, first_cell);
        const Text second = normal_date(row, b, second_cell);
        if (first == U"error" || second == U"error") return false;
        compare(row, first, second);
        return true;
    }
    void store() { new_cells_.store(); }
    std::shared_ptr<const RowView> view() const { return view_; }
    bool any_earlier() const { return any_earlier_; }
    const RowList& no_dates() const { return no_dates_; }

private:
    /// The cell without what stands behind its first blank.
    Text cut_cell(std::size_t row, std::size_t column)
    {
        Table& suf = program_.module1.suf;
        TextView cell = suf.cell(row, column);
        if (const std::size_t blank = instr(cell, U" "); blank > 0) {
            cell = mid(cell, 1, blank - 1);
            suf.set_cell_view(row, column, cell);
        }
        return cell.str();
    }

    Text normal_date(std::size_t row, std::size_t column, Text& text)
    {
        const std::size_t length = text.size();
        const Text before = text;
        Text date = dsx(text);
        if (text != before) new_cells_.add(row, column, text);
        if (date == U"error")
            tell(program_, U"第 " + number_text(program_.form1.daterow) + U"   行，时间格式字段长度异常，dan为:" +
                               number_text(length) + U"  。");
        return date;
    }

    void compare(std::size_t row, const Text& first, const Text& second)
    {
        Form1& form1 = program_.form1;
        const auto first_day = day_of(first), second_day = day_of(second);
        if (!first_day || !second_day) {
            no_dates_.add(row, first_day ? second : first);
            return;
        }
        const double difference = *second_day - *first_day;
        any_earlier_ = any_earlier_ || difference < 0;
        form1.daydiff = std::fabs(difference);
        if (form1.daydiff <= parameters_.days) return;
        form1.compcount += 1;
        view_->add_row(program_.module1.sufrow.line(row), U"        " + number_text(form1.daydiff));
    }

    Program& program_;
    Parameters parameters_;
    NewCells new_cells_;
    std::shared_ptr<RowView> view_;
    bool any_earlier_ = false;
    RowList no_dates_;
};

} // namespace

void date_check(Program& program, ComparisonFiles& files)
{
    Form1& form1 = program.form1;
    const Parameters parameters{box_column(program, 0), box_column(program, 1), box_number(program, 2)};
    tell(program,
         U"温情提示：\r\n参与时间格式比较的suF表的列次A为:" + number_text(parameters.a) +
             U"， \r\n参与时间格式比较的suF表的列次B为:" + number_text(parameters.b) +
             U"，\r\n时间格式比较的时间间隔为:" + number_text(parameters.days) + U"。",
         U"Tarvik  计算查寻 ");
    DateCheck check(program, parameters);
    bool goes_on = true;
    const auto last = static_cast<std::size_t>(form1.curcount);
    for (std::size_t row = 0; goes_on && row <= last; ++row) goes_on = check.check_row(row);
    check.store();
    if (!goes_on) {
        files[ComparisonFiles::between3].write(*check.view());
        return;
    }
    show_view(program, files[ComparisonFiles::between3], check.view());
    form1.number_box().set_text(number_text(form1.compcount));
    if (check.any_earlier()) tell(program, U"温情提示：后面的时间比前面的时间早！", U"Tarvik 计算", Icon::Information);
    if (check.no_dates().count() > 0)
        tell(program, U" 请注意：\r\n以下各行的字段不是日期，已经略过：" + check.no_dates().text());
}

} // namespace tarvik

#include "designer/designer.h"

#include "designer/design/design.h"
#include "runs/folder_walk.h"
#include "runs/sheets.h"

#include <algorithm>
#include <unordered_map>

namespace tarvik {

namespace {

constexpr int most_rows = 1'048'576; // of a worksheet

/// A cell that takes an element of the matching row.
struct Target {
    int row; ///< negative: the key cell's
    int column;
    int field; ///< column of SUF
};

/// The designer's boxes as this command reads them, and the rows of the table that it looks up. One pass works with it.
class KeyCells {
public:
    explicit KeyCells(const Program& program)
        : program_(program), last_row_(std::min(design_number(program.form4.Text4).value_or(1), most_rows)),
          key_row_(design_number(program.form4.Text1[0]).value_or(0)),
          key_column_(design_number(program.form4.Text1[1]).value_or(0))
    {
        const Form4& form4 = program.form4;
        const int key_field = design_number(form4.Text2[1]).value_or(0); // column of SUF
        if (key_column_ <= 0 || key_field <= 0) key_row_ = 0;
        for (int box = 2; box < Form4::first_dynamic; box += 2) {
            const int row = design_number(form4.Text1[box]).value_or(0);
            const auto column = design_number(form4.Text1[box + 1]), field = design_number(form4.Text2[box + 1]);
            if (row != 0 && column > 0 && field > 0) targets_.push_back({row, *column, *field});
        }
        for (int row = 0; key_row_ != 0 && row < program.form1.rowcount; ++row)
            if (const TextView key = own_element(program, row, key_field); !key.empty())
                rows_[upper(key)].push_back(row);
    }

    /// Gives the number of matches.
    int fill(Worksheet& sheet)
    {
        if (key_row_ == 0) return 0;
        int matches = 0;
        const int last = last_key_row(sheet);
        for (int row = 1; row <= last; ++row) matches += match_row(sheet, row);
        return matches;
    }

private:
    int last_key_row(const Worksheet& sheet) const
    {
        int row = last_row_;
        while (row > 1 && sheet.is_empty(row, key_column_)) --row;
        return std::max(row, 1);
    }

    // A match may write into its own key cell: the rows behind it are compared with what the cell then holds.
    int match_row(Worksheet& sheet, int row)
    {
        const int key_row = key_row_ < 0 ? row : key_row_;
        int matches = 0;
        int from = 0;
        while (const auto found = next_row(upper(sheet.cell(key_row, key_column_)), from)) {
            for (const Target& target : targets_) write(sheet, target, row, *found);
            from = *found + 1;
            ++matches;
        }
        return matches;
    }

    void write(Worksheet& sheet, const Target& target, int row, int source)
    {
        const TextView element = own_element(program_, source, target.field);
        if (!element.empty()) sheet.set_cell(target.row < 0 ? row : target.row, target.column, upper(element));
    }

    // The first row of SUF from `from` on that has the key; nothing when there is none.
    std::optional<int> next_row(const Text& key, int from) const
    {
        const auto found = rows_.find(key);
        if (found == rows_.end()) return std::nullopt;
        const auto row = std::ranges::lower_bound(found->second, from);
        return row == found->second.end() ? std::nullopt : std::optional(*row);
    }

    const Program& program_;
    int last_row_; ///< of the worksheet, where keys are looked for
    int key_row_;  ///< negative: every row; 0: the design is out of use
    int key_column_;
    std::vector<Target> targets_;
    std::unordered_map<Text, std::vector<int>> rows_; ///< of SUF by their key in upper case, each list from the top
};

void fill_copy(Program& program, KeyCells& cells, const Text& name)
{
    Form1& form1 = program.form1;
    SpreadsheetTask task(program, form1.sourcefolder + name);
    int matches = 0;
    const int sheets = task.book().worksheet_count();
    for (int sheet = 1; sheet <= sheets; ++sheet) matches += cells.fill(task.take_sheet(sheet));
    show_caption(program, form1.runtitle + U" " + U"   Complete:： " + number_text(form1.sheetno + matches) + U"  : :" +
                              run_time(program) + U"→：" + U" Continue !");
    task.save_as(plain_sheet_path(program, U"A" + name));
    task.finish(Changes::Save);
    form1.sheetno += matches;
}

void qqrs(Program& program)
{
    Form1& form1 = program.form1;
    if (!choose_source_folder(program)) return;
    KeyCells cells(program);
    work_through(program, walked_names(program, form1.sourcefolder),
                 [&](const Text& name) { fill_copy(program, cells, name); });
    if (form1.sheetno == form1.rowcount) return;
    tell(program, U"填词完毕，还差" + number_text(form1.rowcount - form1.sheetno) + U"请收好，再见！");
    form1.Timer9.set_enabled(false);
}

void excelfile_timer(Program& program)
{
    Form1& form1 = program.form1;
    if (form1.sheetno == form1.rowcount) {
        form1.Timer9.set_enabled(false);
        form1.folderchosen = false;
        return;
    }
    qqrs(program);
    if (!form1.folderchosen) return stop_run(program); // the user has cancelled
    show_caption(program, form1.runtitle + U" " + U"   Complete" + number_text(form1.sheetno) + U" " +
                              run_time(program) + U"→：" + U" OK !");
}

} // namespace

constexpr ReportCommand excelfile_command{
    .text = U"An Excelfile",
    .notice = U"它可以通过打开多个excel文档｛如：每个学生的成绩单，每人一张表格｝，通过打开提取EXCELB表（行，列）"
              U"｛如：学号｝；然后在SUF表｛如：学校考试总表｝中查询到该数据行，｛如：该学号对应的考试成绩｝,"
              U"然后将各科成绩转移到EXCEL（其他行，其他列）中。注意：其中报表设计器左下角的“1”框中的数值为EXCEL "
              U"表中最大的行数值，当设置为 1 时，代表每个EXCEL表中有且仅有1个元素与SUF表互动，左上角为筛选数据。",
    .title_first = true,
    .lowers_design_key = true,
    .count_goes_to = &Form1::rowcount,
    .sheets = {.timer = &Form1::Timer9, .own_tick = excelfile_timer},
    .run =
        [](Program& program) {
            program.form1.sheetno = 0;
            program.form1.Timer9.set_enabled(true);
        },
};

} // namespace tarvik

#include "columns/split_line.h"
#include "columns/table.h"
#include "columns/views.h"

#include "platform/code_page.h"

#include <charconv>

namespace tarvik
{

namespace
{

/// The view of a split: row i reads "suf(i,1)***" field "suf(i,2)***" field ..., empty fields left out, eleven blanks
/// behind each. The lines are split again when somebody asks for them.
class SplitView final : public LineSource
{
public:
    SplitView(std::u32string_view table, const RowTexts& rows, std::size_t count)
        : table_(table), buffers_(rows.buffers())
    {
        lines_.reserve(count);
        for (std::size_t row = 0; row < count; ++row)
            lines_.push_back(rows.is_empty(row) ? TextView() : rows.line(row));
    }

    std::size_t line_count() const override { return lines_.size(); }
    void append_line(std::size_t index, Text& target) const override
    {
        const TextView line = lines_[index];
        if (!line.has_storage()) return;
        const Text row = number_text(static_cast<double>(index));
        split_line(line, [&](std::size_t column, std::size_t start, std::size_t length) {
            if (length == 0) return;
            target += table_;
            target += U'(';
            target += row;
            target += U',';
            target += number_text(static_cast<double>(column));
            target += U")***";
            line.substr(start, length).append_to(target);
            target.append(11, U' ');
        });
    }

private:
    std::u32string_view table_;
    std::vector<SharedBuffer> buffers_;
    std::vector<TextView> lines_;
};

/// As many empty lines as the split has rows: what the pane holds when views are not shown.
class EmptyLines final : public LineSource
{
public:
    explicit EmptyLines(std::size_t count) : count_(count) {}
    std::size_t line_count() const override { return count_; }
    void append_line(std::size_t, Text&) const override {}

private:
    std::size_t count_;
};

/// Gives whether any field that is not empty was stored.
bool store_cells(Table& table, const RowTexts& rows, std::size_t count)
{
    bool any = false;
    table.keep(rows.buffers());
    for (std::size_t row = 0; row < count; ++row) {
        if (rows.is_empty(row)) continue;
        const TextView line = rows.line(row);
        split_line(line, [&](std::size_t column, std::size_t start, std::size_t length) {
            table.set_cell_view(row, column, line.substr(start, length));
            any = any || length > 0;
        });
    }
    return any;
}

} // namespace

void devision1(Program& program)
{
    Form1& form1 = program.form1;
    Module1& arrays = program.module1;
    form1.RichTextBox3.set_text({});
    ScratchFile file(program, U"betweenpq.txt");
    form1.curcount = form1.comp ? form1.sugcount : form1.sufcount;
    if (form1.curcount <= 0) return;

    const RowTexts& rows = form1.comp ? arrays.sugrow : arrays.sufrow;
    const std::size_t count = static_cast<std::size_t>(form1.curcount) + 1;
    const bool any = store_cells(form1.comp ? arrays.sug : arrays.suf, rows, count);
    if (form1.showdata) {
        show_view(program, file, std::make_shared<SplitView>(form1.comp ? U"sug" : U"suf", rows, count));
    } else {
        write_view(file, EmptyLines(0));
        form1.RichTextBox3.set_content(PaneText(std::make_shared<EmptyLines>(count)));
    }
    if (form1.showdata || any) form1.Text1[2].set_text(number_text(form1.curcount));
}

} // namespace tarvik

#include "columns/columns.h"
#include "columns/rows.h"
#include "columns/views.h"

#include "platform/background.h"
#include "platform/text/code_page.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

namespace tarvik {

namespace {

/// A split of fewer rows is done before a thread would have begun.
constexpr std::size_t rows_worth_a_thread = 4000;

/// A short text that is copied as a whole block of fixed size, of which `length` characters count.
struct ShortText {
    std::array<char, 16> characters{};
    std::size_t length = 0;

    explicit ShortText(std::string_view text) { append(text); }
    void append(std::string_view text) { length += text.copy(characters.data() + length, characters.size() - length); }
    void append(std::size_t value) { append(std::to_string(value)); }
    char* write(char* out) const
    {
        std::memcpy(out, characters.data(), characters.size());
        return out + length;
    }
};

/// What stands behind the row's number, for every column.
std::vector<ShortText> column_texts()
{
    std::vector<ShortText> texts;
    for (std::size_t column = 0; column <= last_split_column; ++column) {
        texts.emplace_back(",").append(column);
        texts.back().append(")***");
    }
    return texts;
}

/// The view of a split: row i reads "suf(i,1)***" field "suf(i,2)***" field ..., empty fields left out, eleven blanks
/// behind each. The lines are split again when somebody asks for them.
class SplitView final : public LineSource {
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
        const Text row = U"(" + number_text(index) + U",";
        split_line(line, [&](std::size_t column, std::size_t start, std::size_t length) {
            if (length == 0) return;
            target.append(table_).append(row).append(number_text(column)).append(U")***");
            line.substr(start, length).append_to(target);
            target.append(11, U' ');
        });
    }

    std::size_t line_length(std::size_t index) const override
    {
        constexpr std::size_t marks = std::u32string_view(U"(,)***           ").size();
        const TextView line = lines_[index];
        if (!line.has_storage()) return 0;
        const std::size_t around = table_.size() + std::to_string(index).size() + marks;
        std::size_t characters = 0;
        split_line(line, [&](std::size_t column, std::size_t, std::size_t length) {
            if (length > 0) characters += around + (column < 10 ? 1 : 2) + length;
        });
        return characters;
    }
    std::size_t append_encoded(std::size_t first, std::size_t enough, std::string& target) const override
    {
        constexpr std::size_t usual_field = 32, around_field = 64;
        const auto columns = column_texts();
        const ShortText blanks("           "), table(to_utf8(table_) + "(");
        std::string encoded;
        std::vector<char> rendered;
        for (; first < lines_.size() && target.size() < enough; ++first) {
            const TextView line = lines_[first];
            encoded.clear();
            encode_to(line, encoded);
            const std::size_t size = encoded.size();
            encoded.append(usual_field, ' '); // so that a block can be copied from each field
            const std::span<const char> bytes(encoded.data(), size);
            rendered.resize(std::max(rendered.size(), bytes.size() + last_split_column * around_field));
            char* out = rendered.data();
            ShortText row = table;
            row.append(first);
            const auto render = [&](std::size_t column, std::size_t start, std::size_t length) {
                if (length == 0) return;
                out = columns[column].write(row.write(out));
                if (length <= usual_field) std::memcpy(out, bytes.data() + start, usual_field);
                else std::memcpy(out, bytes.data() + start, length);
                out = blanks.write(out + length);
            };
            // No code holds a TAB but the TAB's own, so the fields of the bytes are those of the characters.
            if (line.has_storage()) split_line(bytes, render);
            target.append(rendered.data(), out);
            target += "\r\n";
        }
        return first;
    }

private:
    std::u32string_view table_;
    std::vector<SharedBuffer> buffers_;
    std::vector<TextView> lines_;
};

/// Every match in a document without line ends has a row of its own that begins with the document. Thousands of them
/// are no table, and cutting them would take hours.
void require_lines(const RowTexts& rows, std::size_t count)
{
    constexpr std::size_t most_characters = std::size_t{1} << 30;
    std::size_t characters = 0;
    for (std::size_t row = 0; row < count; ++row) characters += rows.line(row).size();
    if (characters > most_characters)
        throw Failure(U" 请注意：\r\n各行的字符合计超过 1 GB，不能拆列。请检查文件是否以回车换行来分行。");
}

/// Gives whether any field that is not empty was stored.
bool store_cells(Table& table, const RowTexts& rows, std::size_t count)
{
    std::array<std::uint32_t, last_split_column> starts{};
    bool any = false;
    for (std::size_t row = 0; row < count; ++row) {
        if (rows.is_empty(row)) continue;
        const TextView line = rows.line(row);
        std::size_t fields = 0;
        split_line(line, [&](std::size_t column, std::size_t start, std::size_t length) {
            starts[column - 1] = static_cast<std::uint32_t>(start);
            fields = column;
            any = any || length > 0;
        });
        table.set_fields(row, line, std::span(starts).first(fields));
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
    Table& table = form1.comp ? arrays.sug : arrays.suf;
    const std::size_t count = static_cast<std::size_t>(form1.curcount) + 1;
    require_lines(rows, count);
    table.keep(rows.buffers());
    const auto store = [&] { return store_cells(table, rows, count); };
    if (form1.showdata) {
        const auto view = std::make_shared<SplitView>(form1.comp ? U"sug" : U"suf", rows, count);
        // The view is written from the row texts, so the cells need not be there first; they are before a box can open.
        std::future<bool> stored = in_background(store, count >= rows_worth_a_thread);
        file.write_silently(*view);
        stored.get();
        file.tell_failure();
        form1.RichTextBox3.set_content(PaneText(view));
        form1.number_box().set_text(number_text(form1.curcount));
    } else {
        if (store()) form1.number_box().set_text(number_text(form1.curcount));
        file.write(RowView());
        const auto view = std::make_shared<RowView>(); // as many empty lines as the split has rows
        for (std::size_t row = 0; row < count; ++row) view->add_row({});
        form1.RichTextBox3.set_content(PaneText(view));
    }
}

} // namespace tarvik

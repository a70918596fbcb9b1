#include "designer/design/design.h"

#include "platform/code_page.h"

#include <cmath>

namespace tarvik {

namespace {

constexpr char32_t asterisk = U'*';
constexpr int boxes = 50;
constexpr int last_column = 180;
constexpr double largest_number = 1e9; // far above every row, and an int holds it

bool is_space(char32_t character)
{
    return character == U' ' || character == U'\t' || character == U'\r' || character == U'\n';
}

TextView without_spaces(TextView text)
{
    while (!text.empty() && is_space(text[0])) text = text.substr(1);
    while (!text.empty() && is_space(text[text.size() - 1])) text = text.substr(0, text.size() - 1);
    return text;
}

} // namespace

void Opensesame(Form4& form4, TextView line)
{
    if (const std::size_t last = line.rfind(asterisk); last != npos) form4.Text4.set_text(line.substr(last + 1).str());
    std::size_t start = 0;
    std::size_t end = line.find(asterisk);
    if (end == npos) return;
    form4.Text3.set_text(line.substr(0, end).str());
    for (ControlArray<TextBox>* fields : {&form4.Text1, &form4.Text2}) {
        for (int box = 0; box < boxes; ++box) {
            start = end + 1;
            end = line.find(asterisk, start + 1);
            if (end == npos) return;
            (*fields)[box].set_text(line.substr(start, end - start).str());
        }
    }
}

bool load_design(Program& program, TextView file)
{
    const Files& files = program.platform.files;
    const Text path = installed(program, file);
    program.form1.fso = true;
    if (!files.file_exists(path)) return false;
    const Document line = decode_own(files.read(path));
    program.form1.textstream = true;
    Opensesame(program.form4, line.text());
    return true;
}

std::optional<int> design_number(const TextBox& box)
{
    const auto value = number(without_spaces(box.text()));
    if (!value || *value != std::floor(*value) || std::abs(*value) > largest_number) return std::nullopt;
    return static_cast<int>(*value);
}

int design_key_column(const Program& program)
{
    const auto column = design_number(program.form4.Text4);
    if (!column || *column < 1 || *column > last_column)
        throw Failure(U" 请注意：\r\n报表设计器“1”框（关键字段所在的列）应是1至180之间的整数，报表没有开始。");
    return *column;
}

} // namespace tarvik

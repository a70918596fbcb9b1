#include "designer/design/design.h"
#include "fuzz/target.h"
#include "platform/text/code_page.h"
#include "tests/support/test_program.h"

namespace tarvik::fuzz {
namespace {

/// The boxes that a line fills, character by character.
void load_plainly(std::vector<Text>& boxes, const Text& line)
{
    const auto last = line.rfind(U'*');
    if (last != Text::npos) boxes.back() = line.substr(last + 1);
    Text field;
    std::size_t box = 0;
    for (std::size_t i = 0, start = 0; i < line.size() && box + 1 < boxes.size(); ++i) {
        const bool may_end = i > start || box == 0;
        if (line[i] != U'*' || !may_end) {
            field += line[i];
            continue;
        }
        boxes[box++] = field;
        field.clear();
        start = i + 1;
    }
}

std::vector<Text> texts(Form4& form4)
{
    std::vector<Text> all;
    for (const TextBox* box : form4.design_boxes()) all.push_back(box->text());
    return all;
}

} // namespace
} // namespace tarvik::fuzz

/// A parameter file and the design that it makes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace tarvik;
    using namespace tarvik::fuzz;
    static test::TestProgram started;
    Form4& form4 = started.program.form4;
    for (TextBox* box : form4.design_boxes()) form4.load(*box, U"-1");
    std::vector<Text> expected = texts(form4);
    const Document line = decode_own(bytes_of_input(data, size));
    Opensesame(form4, line.text());
    load_plainly(expected, line.text().str());
    require(texts(form4) == expected, "the boxes");

    Elements elements{[](int row, int column) {
                          static const Text element = U"a甲";
                          return (row + column) % 3 == 0 ? TextView() : TextView(element);
                      },
                      5};
    transfer(form4, elements, [](const DesignWrite& cell) {
        require(cell.row > 0 && cell.column > 0 && cell.text == U"a甲", "a cell that is written");
    });
    try {
        const int column = design_key_column(started.program);
        require(column >= 0 && column <= 180, "the key column");
    } catch (const Failure&) { // the user is told
    }
    const bool whole = std::none_of(expected.begin() + 1, expected.end(), [](const Text& box) { return box.empty(); });
    if (!whole) return 0;
    const std::vector<Text> stored = texts(form4);
    Opensesame(form4, design_line(form4));
    std::vector<Text> loaded = texts(form4);
    require(loaded.back() == stored.back() + U"\r\n", "the key column takes the line's end along");
    loaded.back() = stored.back();
    require(loaded == stored, "a stored design comes back");
    return 0;
}

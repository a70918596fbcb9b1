#include "lists/lists.h"

#include "mainwindow/installation_files.h"
#include "platform/text/code_page.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <string_view>

namespace tarvik {

namespace {

constexpr std::size_t bytes_at_once = std::size_t{1} << 20;

/// Appends a character, a TAB, "*" and its number in the text.
void append_record(char32_t character, std::size_t number, std::string& records)
{
    constexpr std::string_view before_number = "\t*", behind_number = "\r\r\n";
    constexpr std::size_t longest_code = 4, longest_number = std::numeric_limits<std::size_t>::digits10 + 1;
    std::array<char, longest_code + before_number.size() + longest_number + behind_number.size()> record{};
    char* end = encode_into(TextView(&character, 1), record.data());
    end = std::ranges::copy(before_number, end).out;
    end = std::to_chars(end, end + longest_number, number).ptr;
    end = std::ranges::copy(behind_number, end).out;
    records.append(record.data(), end);
}

} // namespace

void list_characters(Program& program)
{
    const Document document = program.form1.RichTextBox2.document();
    const auto file = program.platform.files.begin_replacement(installed(program, files::character_list));
    // The list is some eight times as long as the text: it never stands in memory as a whole.
    std::string records;
    document.text().visit([&](auto characters) {
        std::size_t number = 0;
        for (const char32_t character : characters) {
            append_record(character, ++number, records);
            if (records.size() < bytes_at_once) continue;
            file->write(records);
            records.clear();
        }
    });
    file->write(records);
    file->take_place();
    program.notice = U"字符清单已存为安装目录中的 " + Text(files::character_list);
}

} // namespace tarvik

#include "lists/lists.h"

#include "mainwindow/installation_files.h"
#include "platform/text/code_page.h"

namespace tarvik {

void list_characters(Program& program)
{
    constexpr std::size_t bytes_at_once = std::size_t{1} << 20;
    const Document document = program.form1.RichTextBox2.document();
    const auto file = program.platform.files.begin_replacement(installed(program, files::character_list));
    // The list is some eight times as long as the text: it never stands in memory as a whole.
    std::string records;
    document.text().visit([&](auto characters) {
        std::size_t number = 0;
        for (const char32_t character : characters) {
            encode_to({&character, 1}, records);
            records.append("\t*").append(std::to_string(++number)).append("\r\r\n");
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

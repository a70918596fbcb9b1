#include "office/character_list.h"

#include "mainwindow/installation_files.h"
#include "platform/text/code_page.h"

namespace tarvik {

void list_characters(Program& program)
{
    const Document document = program.form1.RichTextBox2.document();
    std::string records;
    document.text().visit([&](auto characters) {
        records.reserve(characters.size() * 12);
        std::size_t count = 0;
        for (const char32_t character : characters) {
            encode_to(TextView(&character, 1), records);
            records += "\t*";
            records += std::to_string(++count);
            records += "\r\r\n";
        }
    });
    program.platform.files.replace(installed(program, files::character_list), records);
}

} // namespace tarvik

#include "platform/text/system_characters.h"

#include <fstream>
#include <iostream>

/// Writes what this system knows of GB18030 and of letters as a source file, for a program that will
/// run on one that knows nothing of them.
namespace {

using namespace tarvik;

void write_table(std::ostream& out, const char* name, const std::vector<char32_t>& characters)
{
    out << "extern const char32_t " << name << "[];\nconst char32_t " << name << "[] = {\n";
    int column = 0;
    for (const char32_t character : characters)
        out << static_cast<unsigned long>(character) << (++column % 20 == 0 ? ",\n" : ",");
    out << "};\nextern const std::size_t " << name << "_size;\nconst std::size_t " << name
        << "_size = " << characters.size() << ";\n";
}

} // namespace

int main(int count, char** words)
{
    const auto gb18030 = two_byte_characters();
    if (count != 2 || gb18030.empty()) {
        std::cerr << "usage: character_tables FILE, on a system that knows GB18030\n";
        return 1;
    }
    std::ofstream out(words[1]);
    out << "#include <cstddef>\nnamespace tarvik {\n";
    write_table(out, "gb18030_two_bytes", gb18030);
    write_table(out, "gb18030_four_bytes", four_byte_characters());
    write_table(out, "small_of", small_letters());
    write_table(out, "capital_of", capital_letters());
    out << "} // namespace tarvik\n";
    out.close();
    return out ? 0 : 1;
}

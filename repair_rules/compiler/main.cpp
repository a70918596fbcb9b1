#include "repair_rules/compiler/rule_file.h"

#include <fstream>
#include <iostream>
#include <iterator>

/// compile_rules RULES SOURCE: writes the rule table as C++. A mistake is told with the table's line and ends the
/// build.
int main(int argc, char** argv)
{
    using namespace tarvik::rule_compiler;
    if (argc != 3) {
        std::cerr << "usage: compile_rules RULES SOURCE\n";
        return 2;
    }
    std::ifstream file(argv[1], std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    if (!file) {
        std::cerr << argv[1] << ": cannot be read\n";
        return 1;
    }
    try {
        const std::string source = rule_source(read_rules(text));
        std::ofstream output(argv[2], std::ios::binary);
        output << source;
        output.close();
        if (output) return 0;
        std::cerr << argv[2] << ": cannot be written\n";
    } catch (const Mistake& mistake) {
        std::cerr << argv[1] << ':' << mistake.line << ": error: " << mistake.what() << '\n';
    }
    return 1;
}

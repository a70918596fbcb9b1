#include "tests/support/places.h"

namespace tarvik::test {

std::string source_folder()
{
    return TARVIK_SOURCE_DIR;
}

std::string built_installation()
{
    return TARVIK_INSTALLATION;
}

} // namespace tarvik::test

#pragma once

#include <string>

/// Where the tests find what they read.
namespace tarvik::test {

/// The folder of the sources.
std::string source_folder();
/// The folder that was built, with the programs and what lies beside them.
std::string built_installation();

} // namespace tarvik::test

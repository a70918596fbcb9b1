#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Packages that the tests make themselves, and what is in one.
namespace tarvik::test {

/// Part names and contents in the order of the package.
using Parts = std::vector<std::pair<std::string, std::string>>;

/// A package of these parts; `compressed` as office applications do it, else stored.
std::string make_package(const Parts& parts, bool compressed = true);
/// `stored` gets the number of parts that lie there without compression.
Parts parts_of(const std::string& package, int* stored = nullptr);
/// The contents of one part; fails the test when there is none.
std::string part_of(const std::string& package, const std::string& name);
void set_part(Parts& parts, const std::string& name, const std::string& contents);
/// Replaces the one place where `from` stands in the part.
void edit_part(Parts& parts, const std::string& name, const std::string& from, const std::string& to);
std::string repeated(std::string_view text, std::size_t count);

} // namespace tarvik::test

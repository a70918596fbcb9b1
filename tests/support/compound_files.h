#pragma once

#include <string>
#include <vector>

/// Files of the older formats as the tests make them.
namespace tarvik::test {

struct Stream {
    std::string name;
    std::string bytes; ///< of 4096 and more
};

/// A compound file with these streams, in sectors of 512 bytes: the table of sectors, then the directory, then the
/// streams one behind the other.
std::string compound_file(const std::vector<Stream>& streams);
/// The bytes of a stream, with these at a place.
std::string stream_with(std::size_t at, const std::string& bytes);
/// A compound file with one stream of this name, which is what tells a workbook from a document.
std::string file_with_stream(const std::string& name);

} // namespace tarvik::test

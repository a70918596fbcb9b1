#include "tests/support/compound_files.h"

#include <algorithm>
#include <cstdint>

namespace tarvik::test {

namespace {

void put(std::string& bytes, std::size_t at, std::uint32_t number, std::size_t size = 4)
{
    for (std::size_t i = 0; i < size; ++i) bytes.at(at + i) = static_cast<char>(number >> 8 * i);
}

} // namespace

std::string compound_file(const std::vector<Stream>& streams)
{
    constexpr std::uint32_t end = 0xfffffffe, none = 0xffffffff;
    std::string header(512, '\0'), table(512, '\xff'), directory, contents;
    const auto add_entry = [&](const std::string& name, std::uint32_t type, std::uint32_t start, std::size_t size) {
        std::string entry(128, '\0');
        for (std::size_t i = 0; i < name.size(); ++i) entry[2 * i] = name[i];
        put(entry, 64, static_cast<std::uint32_t>(2 * name.size() + 2), 2);
        put(entry, 66, type, 1);
        for (const std::size_t at : {68, 72, 76}) put(entry, at, none);
        put(entry, 116, start);
        put(entry, 120, static_cast<std::uint32_t>(size));
        directory += entry;
    };
    add_entry("Root Entry", 5, end, 0);
    std::uint32_t sector = 2;
    put(table, 0, 0xfffffffd);
    put(table, 4, end);
    for (const auto& [name, bytes] : streams) {
        add_entry(name, 2, sector, bytes.size());
        contents += bytes;
        contents.resize((contents.size() + 511) / 512 * 512);
        for (; sector < 2 + contents.size() / 512; ++sector) put(table, 4 * sector, sector + 1);
        put(table, 4 * sector - 4, end);
    }
    for (std::uint32_t i = 0; i < streams.size(); ++i) put(directory, i == 0 ? 76 : 128 * i + 72, i + 1);
    directory.resize(512);
    header.replace(0, 8, "\xd0\xcf\x11\xe0\xa1\xb1\x1a\xe1");
    put(header, 30, 9, 2);
    put(header, 44, 1);
    put(header, 48, 1);
    put(header, 68, end);
    std::fill(header.begin() + 76, header.end(), '\xff');
    put(header, 76, 0);
    return header + table + directory + contents;
}

std::string stream_with(std::size_t at, const std::string& bytes)
{
    std::string stream(5'000, '\0');
    stream.replace(at, bytes.size(), bytes);
    return stream;
}

std::string file_with_stream(const std::string& name)
{
    return compound_file({{name, stream_with(0, "x")}});
}

} // namespace tarvik::test

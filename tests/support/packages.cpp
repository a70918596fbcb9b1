#include "tests/support/packages.h"

#include <gtest/gtest.h>
#include <zip.h>

namespace tarvik::test {

std::string make_package(const Parts& parts, bool compressed)
{
    zip_source_t* source = zip_source_buffer_create(nullptr, 0, 0, nullptr);
    zip_source_keep(source);
    zip_t* archive = zip_open_from_source(source, ZIP_TRUNCATE, nullptr);
    for (const auto& [name, contents] : parts) {
        zip_source_t* part = zip_source_buffer(archive, contents.data(), contents.size(), 0);
        const auto index = static_cast<zip_uint64_t>(zip_file_add(archive, name.c_str(), part, 0));
        zip_set_file_compression(archive, index, compressed ? ZIP_CM_DEFLATE : ZIP_CM_STORE, 0);
        zip_file_set_mtime(archive, index, 1'000'000'000, 0);
    }
    EXPECT_EQ(zip_close(archive), 0);
    zip_stat_t told;
    zip_source_stat(source, &told);
    std::string bytes(told.size, '\0');
    zip_source_open(source);
    zip_source_read(source, bytes.data(), bytes.size());
    zip_source_free(source);
    return bytes;
}

Parts parts_of(const std::string& package, int* stored)
{
    zip_t* archive = zip_open_from_source(zip_source_buffer_create(package.data(), package.size(), 0, nullptr),
                                          ZIP_CHECKCONS, nullptr);
    EXPECT_NE(archive, nullptr);
    Parts parts;
    for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(zip_get_num_entries(archive, 0)); ++i) {
        zip_stat_t told;
        zip_stat_index(archive, i, 0, &told);
        if (stored && told.comp_method == ZIP_CM_STORE) ++*stored;
        EXPECT_EQ(told.mtime, 1'000'000'000) << told.name;
        std::string contents(told.size, '\0');
        zip_file_t* file = zip_fopen_index(archive, i, 0);
        EXPECT_EQ(zip_fread(file, contents.data(), contents.size()), static_cast<zip_int64_t>(contents.size()));
        EXPECT_EQ(zip_fclose(file), 0);
        parts.emplace_back(told.name, contents);
    }
    zip_discard(archive);
    return parts;
}

std::string part_of(const std::string& package, const std::string& name)
{
    for (auto& [part, contents] : parts_of(package)) {
        if (part == name) return contents;
    }
    ADD_FAILURE() << "no part " << name;
    return {};
}

void set_part(Parts& parts, const std::string& name, const std::string& contents)
{
    std::erase_if(parts, [&](const auto& part) { return part.first == name; });
    parts.emplace_back(name, contents);
}

void edit_part(Parts& parts, const std::string& name, const std::string& from, const std::string& to)
{
    for (auto& [part, contents] : parts) {
        if (part != name) continue;
        const auto at = contents.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        contents.replace(at, from.size(), to);
    }
}

std::string repeated(std::string_view text, std::size_t count)
{
    std::string all;
    for (; count > 0; --count) all += text;
    return all;
}

} // namespace tarvik::test

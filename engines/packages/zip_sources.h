#pragma once

#include <ctime>
#include <string>
#include <string_view>

#include <zip.h>

namespace tarvik::ooxml {

/// A zip file that libzip reads from memory and writes to other memory. libzip's own buffer source takes bytes that it
/// was only lent for its own as soon as it keeps their beginning for a changed file, and frees them.
struct ZipFile {
    std::string_view old_bytes; ///< must stay where they are
    std::string new_bytes{};    ///< what was written
    // Where the next byte is read and written.
    zip_uint64_t read_position = 0;
    zip_uint64_t write_position = 0;
    zip_error_t error{};
};

/// A source for zip_open_from_source(); `file` must outlive it. Null when memory is out.
zip_source_t* make_file_source(ZipFile& file);

/// Whether a part is a JPEG or PNG picture, from which deflating takes nothing but time.
bool is_compressed_in_itself(std::string_view contents) noexcept;

/// A source for zip_file_replace() and zip_file_add() that brings its contents as they stand in the zip file, dated
/// `changed`: already deflated unless they are compressed in themselves; libzip has to be told to store those. libzip
/// deflates with its highest level only, which takes two to three times as long as zlib's usual one and gains nothing
/// on sheets. Null when libzip refuses.
zip_source_t* make_part_source(zip_t* archive, std::string_view contents, std::time_t changed);

} // namespace tarvik::ooxml

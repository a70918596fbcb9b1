#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <string_view>

#include <zip.h>

namespace tarvik::ooxml {

// Sources for zip_open_from_source(), null when memory is out.

/// For reading alone: the bytes must stay where they are.
zip_source_t* make_lent_source(std::string_view bytes);
/// For changes. It has a copy: of bytes that it was only lent libzip frees what it keeps for the changed file.
zip_source_t* make_changeable_source(std::string_view bytes);
/// What was written to it.
std::optional<std::string> bytes_in(zip_source_t* source);

/// Whether a part is a JPEG or PNG picture, from which deflating takes nothing but time.
bool is_compressed_in_itself(std::string_view contents) noexcept;

/// A source for zip_file_replace() and zip_file_add() that brings its contents as they stand in the zip file, dated
/// `changed`: already deflated unless they are compressed in themselves; libzip has to be told to store those. libzip
/// deflates with its highest level only, which takes two to three times as long as zlib's usual one and gains nothing
/// on sheets. Null when libzip refuses.
zip_source_t* make_part_source(zip_t* archive, std::string_view contents, std::time_t changed);

} // namespace tarvik::ooxml

#pragma once

#include <ctime>
#include <string_view>

#include <zip.h>

namespace tarvik::ooxml {

/// A source for zip_file_replace() that brings its contents already compressed, dated `changed`. libzip deflates with
/// its highest level only, which takes two to three times as long as zlib's usual one and gains nothing on sheets. Null
/// when libzip refuses.
zip_source_t* make_deflated_source(zip_t* archive, std::string_view contents, std::time_t changed);

} // namespace tarvik::ooxml

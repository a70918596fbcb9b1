#pragma once

#include "engines/documents/picture.h"
#include "platform/files/files.h"

namespace tarvik::ooxml {

struct PictureFile {
    std::string contents;
    Picture picture;
};

/// Failures name the picture's file.
PictureFile read_picture_file(const Files& files, TextView path);

} // namespace tarvik::ooxml

#pragma once

#include "platform/files/files.h"

namespace tarvik::ooxml {

enum class PictureKind { Jpeg, Png };

/// What a picture file tells of itself.
struct Picture {
    PictureKind kind;
    // Its natural size in inches, as its points lie in the file.
    double width;
    double height;
    // How it is to be shown: first mirrored from left to right, then turned clockwise.
    bool is_mirrored = false;
    int quarter_turns = 0;
};

/// Contents decide what the file is, not its name. Damage for what is neither JPEG nor PNG, is not whole, is not what
/// it says it is, or has too many points.
Picture read_picture(std::string_view bytes);

struct PictureFile {
    std::string contents;
    Picture picture;
};

/// Failures name the picture's file.
PictureFile read_picture_file(const Files& files, TextView path);

} // namespace tarvik::ooxml

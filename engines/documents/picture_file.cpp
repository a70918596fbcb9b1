#include "engines/documents/picture_file.h"

#include "engines/packages/damage.h"

namespace tarvik::ooxml {

namespace {

constexpr std::uint64_t largest_file = 64U << 20U;

} // namespace

PictureFile read_picture_file(const Files& files, TextView path)
{
    return naming_file(U"图片", path, [&]() -> PictureFile {
        if (files.stamp(path).size > largest_file) throw Damage(U"文件过大。");
        auto contents = files.read(path);
        const auto picture = read_picture(contents);
        return {std::move(contents), picture};
    });
}

} // namespace tarvik::ooxml

#include "playback/player_platform.h"

#include "platform/failure.h"
#include "platform/files/file_name.h"
#include "platform/files/path_text.h"
#include "scripts/script.h"

#include <utility>

namespace tarvik {

namespace fs = std::filesystem;

void PlayerScreen::popup_menu()
{
    transcript_.line("menu");
    menu_open_ = true;
}

bool PlayerScreen::close_menu()
{
    return std::exchange(menu_open_, false);
}

void PlayerPrinter::print(const fs::path& file, TextView name)
{
    if (!folder_) throw Failure(U"没有默认打印机，不能打印：" + name);
    const TextView document = split_path(name).name;
    std::error_code error;
    fs::create_directories(*folder_, error);
    fs::copy_file(file, free_place(document), error);
    if (error) throw Failure(U"打印失败：" + name + U"（" + from_utf8(error.message()) + U"）");
    transcript_.line("print " + json_string(document));
}

fs::path PlayerPrinter::free_place(TextView name) const
{
    const fs::path wanted = *folder_ / path_of(name);
    fs::path place = wanted;
    for (int copy = 2; fs::exists(place); ++copy)
        place =
            *folder_ / path_of(text_of(wanted.stem()) + U" (" + number_text(copy) + U")" + text_of(wanted.extension()));
    return place;
}

} // namespace tarvik

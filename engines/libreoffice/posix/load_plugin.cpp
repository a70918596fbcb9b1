
#include "engines/libreoffice/engine.h"
#include "engines/packages/damage.h"
#include "platform/files/system_paths.h"

#include <dlfcn.h>

namespace tarvik::libreoffice {

namespace fs = std::filesystem;

namespace {

constexpr std::u32string_view packages = U"请安装 libreoffice-calc 和 libreoffice-writer。";

} // namespace

// The library is never closed: LibreOffice's own libraries keep objects until the program ends.
Plugin& load_plugin(const fs::path& file)
{
    std::error_code error;
    if (!fs::exists(file, error))
        throw ooxml::Damage(U"需要 LibreOffice，而程序缺少驱动它的插件 " + from_utf8(utf8_of(file.filename())) +
                            U"；请安装 tarvik-libreoffice；自行编译的程序，请安装 libreoffice-dev 后重新编译。");
    void* const library = ::dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!library) throw ooxml::Damage(U"没有找到 LibreOffice；" + Text(packages));
    const auto make = reinterpret_cast<PluginFunction*>(::dlsym(library, plugin_function));
    if (!make) throw ooxml::Damage(U"插件 " + from_utf8(utf8_of(file.filename())) + U" 与程序不相配。");
    Plugin& plugin = *make();
    if (!fs::exists(plugin.program_folder() / "soffice.bin", error))
        throw ooxml::Damage(U"没有找到 LibreOffice；" + Text(packages));
    return plugin;
}

Text suite_title()
{
    return U"LibreOffice";
}

fs::path usual_plugin_file()
{
    std::error_code error;
    const fs::path folder = program_file().parent_path();
    const fs::path packaged = folder.parent_path() / "lib/tarvik" / plugin_file;
    return folder.filename() == "bin" && fs::exists(packaged, error) ? packaged : folder / plugin_file;
}

} // namespace tarvik::libreoffice

namespace tarvik {

bool suite_edits() noexcept
{
    return true;
}

} // namespace tarvik

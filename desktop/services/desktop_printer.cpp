#include "desktop/services/desktop_printer.h"

#include "desktop/services/default_printer.h"
#include "engines/libreoffice/exchange_folder.h"
#include "engines/packages/damage.h"
#include "platform/files/disk_file.h"
#include "platform/files/file_failure.h"

#include <system_error>

namespace tarvik {

namespace {

Failure print_failure(TextView name, TextView reason)
{
    return Failure(U" 请注意：\r\n文件 " + name + U" 没有打印：" + reason);
}

} // namespace

// A suite may print into nothing, and say nothing, where there is no queue: so the queue is looked up first.
void DesktopPrinter::print(const std::filesystem::path& file, TextView name)
{
    const auto printer = default_printer();
    if (printer.empty()) throw print_failure(name, U"没有找到默认打印机。");
    try {
        const libreoffice::ExchangeFolder folder(office_.folder());
        auto opened = office_.open(folder.put(file.filename(), read_file(file)));
        if (!opened) throw print_failure(name, libreoffice::suite_title() + U" 不能打开它。");
        opened.call([&](libreoffice::OpenFile& held) { held.print(printer); });
    } catch (const ooxml::Damage& damage) {
        throw print_failure(name, damage.reason());
    } catch (const std::system_error& error) {
        throw print_failure(name, reason_of(error) + U"。");
    }
}

} // namespace tarvik

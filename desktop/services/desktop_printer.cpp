#include "desktop/services/desktop_platform.h"
#include "office/libreoffice/exchange_folder.h"
#include "office/packages/damage.h"
#include "platform/disk_file.h"
#include "platform/path_text.h"

#include <QProcess>

#include <system_error>

namespace tarvik {

namespace {

constexpr int queue_patience = 5'000; // milliseconds for the question which printer is the default one

Failure print_failure(TextView name, TextView reason)
{
    return Failure(U" 请注意：\r\n文件 " + name + U" 没有打印：" + reason);
}

/// The name of the system's default queue, or nothing.
std::string default_printer()
{
    QProcess query;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "C");
    query.setProcessEnvironment(environment);
    query.start("lpstat", {"-d"});
    if (!query.waitForFinished(queue_patience) || query.exitCode() != 0) return {};
    const QByteArray told = query.readAllStandardOutput();
    const QByteArray beginning = "destination: ";
    const auto at = told.indexOf(beginning);
    return at < 0 ? std::string() : told.mid(at + beginning.size()).trimmed().toStdString();
}

} // namespace

// LibreOffice prints into nothing, and says nothing, where there is no queue: so the queue is looked up first.
void DesktopPrinter::print(const std::filesystem::path& file, TextView name)
{
    const auto printer = default_printer();
    if (printer.empty()) throw print_failure(name, U"没有找到默认打印机。");
    try {
        const libreoffice::ExchangeFolder folder(office_.folder());
        auto opened = office_.open(folder.put(utf8_of(file.filename()), read_file(file)));
        if (!opened) throw print_failure(name, U"LibreOffice 不能打开它。");
        opened.call([&](libreoffice::OpenFile& held) { held.print(printer); });
    } catch (const ooxml::Damage& damage) {
        throw print_failure(name, damage.reason());
    } catch (const std::system_error& error) {
        throw print_failure(name, from_utf8(error.code().message()) + U"。");
    }
}

} // namespace tarvik

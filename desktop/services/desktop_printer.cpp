#include "desktop/services/desktop_platform.h"
#include "platform/failure.h"

#include <QProcess>
#include <QStandardPaths>

namespace tarvik {

namespace {

constexpr int queue_patience = 5'000;   // milliseconds for the question which printer is the default one
constexpr int print_patience = 120'000; // milliseconds for laying out and handing over one file

Failure print_failure(TextView name, TextView reason)
{
    return Failure(U" 请注意：\r\n文件 " + name + U" 没有打印：" + reason);
}

// The office prints into nothing, and says nothing, where there is no queue: so the queue is looked up first.
bool has_default_printer()
{
    QProcess query;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "C");
    query.setProcessEnvironment(environment);
    query.start("lpstat", {"-d"});
    return query.waitForFinished(queue_patience) && query.exitCode() == 0 &&
           query.readAllStandardOutput().contains("destination: ");
}

} // namespace

void DesktopPrinter::print(const std::filesystem::path& file, TextView name)
{
    if (!has_default_printer()) throw print_failure(name, U"没有找到默认打印机。");
    const QString office = QStandardPaths::findExecutable("soffice");
    if (office.isEmpty()) throw print_failure(name, U"没有找到可以打印此文件的办公软件。");
    QProcess process;
    process.start(office, {"--headless", "--norestore", "-p", QString::fromStdString(file.string())});
    if (!process.waitForFinished(print_patience)) {
        process.kill();
        process.waitForFinished(queue_patience);
        throw print_failure(name, U"打印超时。");
    }
    if (process.exitCode() != 0) throw print_failure(name, U"办公软件打印出错。");
}

} // namespace tarvik

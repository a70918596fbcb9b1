#include "desktop/desktop.h"
#include "desktop/services/system.h"
#include "platform/files/working_folder.h"
#include "platform/program_start.h"

#include <QApplication>
#include <QFileInfo>
#include <QIcon>

namespace {

constexpr const char* usage = "用法：tarvik [文件]\n"
                              "  文件        启动后打开的文本文件\n"
                              "  --help      显示这段说明\n"
                              "  --version   显示版本\n";

/// Whether the words ask for something that needs no window; it is done then.
bool answered(const std::vector<std::string>& words)
{
    for (const std::string& word : words) {
        if (word == "--help") tarvik::show_words(usage, false);
        else if (word == "--version") tarvik::show_words("tarvik " + std::string(tarvik::version()) + '\n', false);
        else continue;
        return true;
    }
    return false;
}

int run(const QStringList& files)
{
    const tarvik::WorkingFolder folder = tarvik::open_working_folder();
    tarvik::Desktop desktop(folder.path, tarvik::missing_drives());
    desktop.start(folder.trouble);
    if (!files.isEmpty()) desktop.open(QFileInfo(files.front()).absoluteFilePath());
    return QApplication::exec();
}

} // namespace

int main(int count, char** words)
{
    if (answered(tarvik::start_program(count, words))) return 0;
    QApplication application(count, words);
    QCoreApplication::setApplicationName("Tarvik");
    QGuiApplication::setDesktopFileName("tarvik");
    QGuiApplication::setWindowIcon(QIcon(":/icon/tarvik.png"));
    QGuiApplication::setQuitOnLastWindowClosed(false);
    const QStringList files = QCoreApplication::arguments().mid(1); // the toolkit has taken its own options
    if (files.size() > 1 || (!files.isEmpty() && files.front().startsWith('-'))) {
        tarvik::show_words(usage, true);
        return 2;
    }
    try {
        return run(files);
    } catch (const std::exception& error) {
        tarvik::show_words("tarvik: " + std::string(error.what()) + '\n', true);
        return 1;
    }
}

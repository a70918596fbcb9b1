#include "desktop/desktop.h"
#include "desktop/look/window_icon.h"

#include <QApplication>

#include <iostream>

namespace {

std::filesystem::path program_folder()
{
    return std::filesystem::path(QCoreApplication::applicationDirPath().toStdString());
}

} // namespace

int main(int count, char** words)
{
    QApplication application(count, words);
    QCoreApplication::setApplicationName("Tarvik");
    QGuiApplication::setDesktopFileName("tarvik");
    QGuiApplication::setWindowIcon(tarvik::window_icon());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    try {
        tarvik::Desktop desktop(program_folder(), {});
        desktop.start();
        return QApplication::exec();
    } catch (const std::exception& error) {
        std::cerr << "tarvik: " << error.what() << '\n';
        return 1;
    }
}

#include "desktop/desktop.h"
#include "desktop/look/window_icon.h"
#include "platform/system_paths.h"

#include <QApplication>

#include <iostream>

int main(int count, char** words)
{
    QApplication application(count, words);
    QCoreApplication::setApplicationName("Tarvik");
    QGuiApplication::setDesktopFileName("tarvik");
    QGuiApplication::setWindowIcon(tarvik::window_icon());
    QGuiApplication::setQuitOnLastWindowClosed(false);
    try {
        tarvik::Desktop desktop(tarvik::program_file().parent_path(), {});
        desktop.start();
        return QApplication::exec();
    } catch (const std::exception& error) {
        std::cerr << "tarvik: " << error.what() << '\n';
        return 1;
    }
}

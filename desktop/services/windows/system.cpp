#include "desktop/services/system.h"

#include <QDesktopServices>
#include <QSettings>
#include <QUrl>

namespace tarvik {

void open_folder(const QString& folder, const std::function<void()>& failed)
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(folder))) failed();
}

SystemLook system_look()
{
    const auto number = [](const char* key, const char* name, int otherwise) {
        return QSettings(QString("HKEY_CURRENT_USER\\") + key, QSettings::NativeFormat).value(name, otherwise).toInt();
    };
    return {number("Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize", "AppsUseLightTheme", 1) == 0,
            (number("Control Panel\\Accessibility\\HighContrast", "Flags", 0) & 1) != 0};
}

} // namespace tarvik

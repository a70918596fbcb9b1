#include "desktop/services/system.h"

#include "desktop/look/qt_text.h"
#include "platform/files/paths.h"

#include <QDesktopServices>
#include <QStandardPaths>
#include <QUrl>

#include <cstdio>
#include <windows.h>

namespace tarvik {

DriveMap missing_drives()
{
    const UINT drive = ::GetDriveTypeW(drive_folder('d').c_str());
    if (drive != DRIVE_NO_ROOT_DIR && drive != DRIVE_CDROM) return {};
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return {{'d', path_of(from_qt(documents)).make_preferred()}};
}

// A program with a window has an output only where it was given one.
void show_words(const std::string& words, bool is_complaint)
{
    const HANDLE output = ::GetStdHandle(is_complaint ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    if (::GetFileType(output) != FILE_TYPE_UNKNOWN) (void)std::fputs(words.c_str(), is_complaint ? stderr : stdout);
    else
        ::MessageBoxW(nullptr, path_of_utf8(words).c_str(), L"Tarvik 计算",
                      is_complaint ? MB_ICONEXCLAMATION : MB_ICONINFORMATION);
}

void open_by_system(const QString& path, const std::function<void()>& failed)
{
    if (!QDesktopServices::openUrl(QUrl::fromLocalFile(path))) failed();
}

Look system_look()
{
    const auto number = [](const char* key, const char* name, int otherwise) {
        return QSettings(QString("HKEY_CURRENT_USER\\") + key, QSettings::NativeFormat).value(name, otherwise).toInt();
    };
    if ((number("Control Panel\\Accessibility\\HighContrast", "Flags", 0) & 1) != 0) return Look::HighContrast;
    const char* const themes = "Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
    return number(themes, "AppsUseLightTheme", 1) == 0 ? Look::Dark : Look::Light;
}

} // namespace tarvik

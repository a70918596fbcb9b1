#include "desktop/services/system.h"

#include "desktop/services/desktop_printer.h"

#include <QCoreApplication>
#include <QProcess>

#include <iostream>

namespace tarvik {

namespace {

// What a program says within so many milliseconds; nothing where it fails.
QByteArray answer(const char* program, const QStringList& words, int patience)
{
    QProcess query;
    query.start(program, words);
    const bool is_answered = query.waitForFinished(patience) && query.exitCode() == 0;
    return is_answered ? query.readAllStandardOutput() : QByteArray();
}

QByteArray setting(const char* group, const char* key)
{
    return answer("gsettings", {"get", group, key}, 500);
}

} // namespace

DriveMap missing_drives()
{
    return {};
}

void show_words(const std::string& words, bool is_complaint)
{
    (is_complaint ? std::cerr : std::cout) << words << std::flush;
}

void open_by_system(const QString& path, const std::function<void()>& failed)
{
    auto* opener = new QProcess(QCoreApplication::instance());
    const auto end = [opener, failed](bool is_failure) {
        opener->deleteLater();
        if (is_failure) failed();
    };
    QObject::connect(opener, &QProcess::finished, opener, [end](int status) { end(status != 0); });
    QObject::connect(opener, &QProcess::errorOccurred, opener, [end](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) end(true);
    });
    opener->start("xdg-open", {path});
}

std::string default_printer()
{
    const QByteArray told = answer("env", {"LC_ALL=C", "lpstat", "-d"}, 5'000);
    const QByteArray beginning = "destination: ";
    const auto at = told.indexOf(beginning);
    return at < 0 ? std::string() : told.mid(at + beginning.size()).trimmed().toStdString();
}

Look system_look()
{
    const QByteArray theme = qgetenv("GTK_THEME").toLower();
    if (theme.contains("contrast") || setting("org.gnome.desktop.a11y.interface", "high-contrast").contains("true"))
        return Look::HighContrast;
    const bool is_dark =
        theme.contains("dark") || setting("org.gnome.desktop.interface", "color-scheme").contains("prefer-dark");
    return is_dark ? Look::Dark : Look::Light;
}

} // namespace tarvik

#include "desktop/services/recent_files.h"

#include <QDir>
#include <QFileInfo>

namespace tarvik {

namespace {

constexpr qsizetype most = 12;
const QString key = "files/recent";

} // namespace

QSettings user_settings()
{
    return QSettings("Tarvik", "Tarvik");
}

RecentFiles::RecentFiles(const QString& first_folder)
    : first_folder_(first_folder), paths_(user_settings().value(key).toStringList())
{
}

void RecentFiles::add(const QString& path)
{
    paths_.removeAll(path);
    paths_.prepend(path);
    paths_ = paths_.mid(0, most);
    user_settings().setValue(key, paths_);
}

QStringList RecentFiles::files(const QStringList& patterns) const
{
    QStringList there;
    for (const QString& path : paths_)
        if (const QFileInfo file(path); file.isFile() && QDir::match(patterns, file.fileName())) there += path;
    return there;
}

QString RecentFiles::folder(const QStringList& patterns) const
{
    for (const QStringList& wanted : {patterns, QStringList("*")})
        for (const QString& path : paths_) {
            const QFileInfo file(path), folder(file.absolutePath());
            if (folder.isDir() && QDir::match(wanted, file.fileName())) return folder.absoluteFilePath();
        }
    return first_folder_;
}

} // namespace tarvik

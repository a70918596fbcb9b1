#pragma once

#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <QString>
#include <QStringList>

namespace tarvik {

/// What the user has chosen, over the program's end too.
inline QSettings user_settings()
{
    return QSettings("Tarvik", "Tarvik");
}

/// The files that were chosen last, over the program's end too. They are kept with the user's other settings, and where
/// these cannot be written for as long as the program runs.
class RecentFiles {
public:
    explicit RecentFiles(const QString& first_folder)
        : first_folder_(first_folder), paths_(user_settings().value(key).toStringList())
    {
    }

    void add(const QString& path)
    {
        paths_.removeAll(path);
        paths_.prepend(path);
        paths_ = paths_.mid(0, most);
        user_settings().setValue(key, paths_);
    }
    /// Those that are still there and have such a name, as "*.txt", the last first.
    QStringList files(const QStringList& patterns) const
    {
        QStringList there;
        for (const QString& path : paths_)
            if (const QFileInfo file(path); file.isFile() && QDir::match(patterns, file.fileName())) there += path;
        return there;
    }
    /// Of the last file of such a name, else of the last file, else the first folder.
    QString folder(const QStringList& patterns) const
    {
        for (const QStringList& wanted : {patterns, QStringList("*")})
            for (const QString& path : paths_) {
                const QFileInfo file(path), folder(file.absolutePath());
                if (folder.isDir() && QDir::match(wanted, file.fileName())) return folder.absoluteFilePath();
            }
        return first_folder_;
    }

private:
    static constexpr qsizetype most = 12;
    static constexpr const char* key = "files/recent";
    QString first_folder_;
    QStringList paths_;
};

} // namespace tarvik

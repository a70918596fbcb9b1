#pragma once

#include <QSettings>
#include <QString>
#include <QStringList>

namespace tarvik {

/// What the user has chosen, over the program's end too.
QSettings user_settings();

/// The files that were chosen last, over the program's end too. They are kept with the user's other settings, and where
/// these cannot be written for as long as the program runs.
class RecentFiles {
public:
    explicit RecentFiles(const QString& first_folder);

    void add(const QString& path);
    /// Those that are still there and have such a name, as "*.txt", the last first.
    QStringList files(const QStringList& patterns) const;
    /// Of the last file of such a name, else of the last file, else the first folder.
    QString folder(const QStringList& patterns) const;

private:
    QString first_folder_;
    QStringList paths_;
};

} // namespace tarvik

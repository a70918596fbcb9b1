#pragma once

#include "desktop/look/theme.h"

#include <QSettings>
#include <QString>

#include <functional>
#include <string>

/// What only the system knows, does, or keeps for the user.
namespace tarvik {

/// The drive that files are offered to go to, with the user's documents in its place, where this computer has none that
/// can be written.
DriveMap missing_drives();

/// For words that a program has before it has a window: on its output, or in a box where it has none.
void show_words(const std::string& words, bool is_complaint);

/// Opens a file or folder by the program that the system has for it. `failed` is called when there is none, perhaps
/// later.
void open_by_system(const QString& path, const std::function<void()>& failed);

/// What the user has chosen, over the program's end too.
inline QSettings user_settings()
{
    return QSettings("Tarvik", "Tarvik");
}

/// The look that the user has chosen for the whole system.
Look system_look();

} // namespace tarvik

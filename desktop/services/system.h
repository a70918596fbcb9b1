#pragma once

#include <QString>

#include <functional>

/// What only the system knows or does.
namespace tarvik {

/// Shows a folder in the system's own way. `failed` is called when nothing can show it, perhaps later.
void open_folder(const QString& folder, const std::function<void()>& failed);

struct SystemLook {
    bool is_dark = false, is_high_contrast = false;
};
/// The look that the user has chosen for the whole system.
SystemLook system_look();

} // namespace tarvik

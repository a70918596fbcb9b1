#pragma once

#include "platform/platform.h"

#include <QString>
#include <QStringList>

#include <functional>

class QWidget;

namespace tarvik {

/// The real boxes, over the window that the user works in.
class DesktopDialogs final : public Dialogs {
public:
    /// `before` is called ahead of every box, so that the windows show what the box speaks of; it throws nothing. File
    /// dialogs begin in `folder` and go on where the last one ended.
    DesktopDialogs(std::function<void()> before, QString folder)
        : before_(std::move(before)), folder_(std::move(folder))
    {
    }

    Answer message(const Message& message) override;
    Text input(TextView title, TextView prompt, TextView preset) override;
    std::optional<Text> open_file(TextView filter) override { return choose_file(filter, false); }
    std::optional<Text> save_file(TextView filter) override { return choose_file(filter, true); }

private:
    std::optional<Text> choose_file(TextView filter, bool save);
    std::function<void()> before_;
    QString folder_;
};

/// "name|*.ext|name|*.ext" as the toolkit has its filters. "*.*" stands for every file, with a point or without.
QStringList name_filters(TextView filter);

} // namespace tarvik

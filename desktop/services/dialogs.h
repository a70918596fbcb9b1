#pragma once

#include "desktop/services/recent_files.h"
#include "platform/files/files.h"
#include "platform/platform.h"

#include <QPointer>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QWidget>

#include <functional>

namespace tarvik {

/// The real boxes, over the window that the user works in.
class DesktopDialogs final : public Dialogs {
public:
    struct Surroundings {
        /// Brings the windows up to date ahead of every box; throws nothing.
        std::function<void()> before = [] {};
        /// What boxes should leave in view, on the screen.
        std::function<QRect()> keep_clear = [] { return QRect(); };
        /// Folders that stand at the side of file dialogs.
        std::function<QStringList()> places = [] { return QStringList(); };
    };
    /// File dialogs begin in `folder` while no file has been chosen. A path that is offered on one of `drives` is
    /// offered where it leads.
    DesktopDialogs(const QString& folder, DriveMap drives)
        : folder_(folder), recent_(folder), drives_(std::move(drives))
    {
    }
    void set_surroundings(Surroundings surroundings) { around_ = std::move(surroundings); }

    Answer message(const Message& message) override;
    Text input(TextView title, TextView prompt, TextView preset) override;
    std::optional<Text> open_file(TextView filter) override;
    std::optional<Text> save_file(TextView filter) override;

    /// The next question for a file to open is answered by this one, without a box.
    void open_next(const QString& path) { next_ = path; }

    /// The text of the last box that could only be confirmed.
    const QString& last_told() const { return last_told_; }

private:
    std::optional<Text> choose_file(TextView filter, bool save);
    QString with_one_separator(TextView text) const;
    Surroundings around_;
    QString folder_;
    RecentFiles recent_;
    DriveMap drives_;
    QString next_;
    QString last_told_;
    QPointer<QWidget> over_; // what the last box stood over
};

} // namespace tarvik

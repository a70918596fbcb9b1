#pragma once

#include "desktop/look/busy_cursor.h"
#include "platform/platform.h"

#include <QElapsedTimer>

#include <functional>

namespace tarvik {

/// The system's clipboard. What the program itself has put there comes back character for character; other programs
/// get the line ends that they expect, and theirs become CR LF.
class DesktopClipboard final : public Clipboard {
public:
    void clear() override;
    Text text() const override;
    void set_text(TextView text) override;
    void set_source(const TextSource& source) override;
};

/// The screen in twips. A screen narrower than the design asks for counts as wide enough, and the windows are shown
/// smaller instead.
class DesktopScreen final : public Screen {
public:
    struct Work {
        std::function<void()> show;            ///< brings the windows up to date
        std::function<void(double)> show_part; ///< a part of 1 done; a negative number ends the display
        std::function<void()> open_menu;
    };
    void set_work(Work work) { work_ = std::move(work); }

    double width() const override;
    double height() const override;
    void refresh() override;
    void progress(std::uint64_t done, std::uint64_t total) override;
    void popup_menu() override { work_.open_menu(); }
    /// A handler has ended, and with it the work whose progress it told.
    void end_progress();

private:
    Work work_{[] {}, [](double) {}, [] {}};
    QElapsedTimer since_start_; // of the work whose progress is shown
    QElapsedTimer since_shown_;
    std::optional<BusyCursor> cursor_;
};

} // namespace tarvik

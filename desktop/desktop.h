#pragma once

#include "desktop/front/event_sources.h"
#include "desktop/services/desktop_platform.h"
#include "desktop/services/desktop_printer.h"
#include "desktop/services/dialogs.h"
#include "desktop/windows/form1_window.h"
#include "desktop/windows/form3_window.h"
#include "desktop/windows/form4_window.h"
#include "desktop/windows/main_menu.h"
#include "platform/files/files.h"
#include "platform/platform.h"
#include "scripts/recorder.h"

#include <QTranslator>

#include <chrono>
#include <memory>

namespace tarvik {

/// The program on the desktop: the model, the windows that show it, and everything between the two. Needs a
/// QApplication.
class Desktop {
public:
    Desktop(const std::filesystem::path& installation, const DriveMap& drives);
    ~Desktop();
    Desktop(const Desktop&) = delete;
    Desktop& operator=(const Desktop&) = delete;

    /// Brings the program to its shown window, and tells what the user is to know then.
    void start(const Text& notice = {});
    /// Opens a document in the main window as the button for it does.
    void open(const QString& path);
    Program& program() { return program_; }
    Form1Window& main_window() { return form1_; }
    Recorder& recorder() { return recorder_; }
    TaskPlayer& player() { return player_; }

private:
    void show();
    void show_ahead_of_box() noexcept;
    void event_ended();
    void show_run();
    void show_run_end();
    void apply_look();
    void follow_file();
    std::pair<int, std::size_t> saved() const { return {program_.run.number, program_.run.files.size()}; }

    Files files_;
    QTranslator chinese_; // the toolkit's own words
    Theme theme_;
    SystemClock clock_;
    DesktopClipboard clipboard_;
    DesktopScreen screen_;
    libreoffice::LibreOffice libreoffice_;
    DesktopPrinter printer_{libreoffice_};
    DesktopDialogs dialogs_;
    OverheardDialogs heard_dialogs_;
    OverheardClipboard heard_clipboard_;
    std::unique_ptr<OfficeEngines> office_;
    Program program_;
    Recorder recorder_;
    Mirror mirror_;
    EventQueue queue_;
    TaskPlayer player_;
    Front front_;
    Form1Window form1_;
    Form3Window form3_;
    Form4Window form4_;
    ContextMenu context_menu_;
    TaskWindow tasks_;
    std::optional<Look> look_; // none follows the system
    QTimer growth_;            // looks for a file that grows
    bool look_is_applied_ = false;
    QString followed_; // the file, and
    qint64 size_ = -1; // of the open file, when it was last looked at
    MainMenu menu_;
    std::pair<int, std::size_t> told_;    // the run whose files were told of last, and how many they were
    bool runs_ = false, stopped_ = false; // a run was on when the windows were shown last; it was wished to stop
};

} // namespace tarvik

#pragma once

#include "engines/hidden_engines.h"
#include "engines/libreoffice/bridge.h"
#include "engines/packages/package.h"
#include "engines/packages/temporary_folder.h"
#include "engines/spreadsheets/engine.h"
#include "platform/platform.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <future>
#include <mutex>
#include <optional>
#include <sys/types.h>
#include <thread>
#include <type_traits>

namespace tarvik::libreoffice {

/// The plugin in a file. Throws Damage with what is to be installed where the plugin or LibreOffice is missing.
Plugin& load_plugin(const std::filesystem::path& file);

/// Beside the program that runs; lib/tarvik beside a program's folder that is named bin.
std::filesystem::path usual_plugin_file();

/// What a message calls the suite behind the plugin.
Text suite_title();

/// One hidden LibreOffice with a profile, a pipe and a process group of its own. A guardian beside it ends the whole
/// group and removes the folder when this program ends, however it does.
class OfficeProcess {
public:
    /// `folder` holds the profile; it must be there. Throws std::system_error when no process can be started.
    OfficeProcess(const std::filesystem::path& programs, const std::filesystem::path& folder);
    /// Ends the group at once; the folder stays.
    ~OfficeProcess();
    OfficeProcess(const OfficeProcess&) = delete;
    OfficeProcess& operator=(const OfficeProcess&) = delete;

    const std::string& pipe() const noexcept { return pipe_; }
    pid_t group() const noexcept { return office_; }
    bool has_ended();
    /// Ends the group at once, from any thread; a call that waits for it then fails.
    void kill() const noexcept;

private:
    std::filesystem::path temporary_; ///< of what LibreOffice makes for itself
    std::string pipe_;
    pid_t office_ = -1, guardian_ = -1;
    int guardian_line_ = -1; ///< when it closes unsaid, the guardian acts
    bool has_ended_ = false;
};

/// A folder for the copies of one file that pass between the program and LibreOffice; it goes with all that is in it.
/// So LibreOffice never touches the file that the user knows.
class ExchangeFolder {
public:
    /// Makes a folder of its own inside of `parent`. Throws Damage, as the other functions do.
    explicit ExchangeFolder(const std::filesystem::path& parent);
    ~ExchangeFolder();
    ExchangeFolder(const ExchangeFolder&) = delete;
    ExchangeFolder& operator=(const ExchangeFolder&) = delete;

    std::filesystem::path place(const std::filesystem::path& name) const { return path_ / name; }
    std::filesystem::path put(const std::filesystem::path& name, std::string_view bytes) const;
    std::string take(const std::filesystem::path& name) const;

private:
    std::filesystem::path path_;
};

using Time = std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

struct Settings {
    /// Called some twenty times a second while the caller waits for LibreOffice, with the time waited so far.
    std::function<void(Time waited)> meanwhile{};
    std::filesystem::path plugin = usual_plugin_file();
    Time start_limit{60'000}, call_limit{60'000};
    std::function<Clock::time_point()> clock = Clock::now; ///< that the limits are measured by
    Time until_rest{300'000};                              ///< an idle process is ended then
    int most_files = 300; ///< a process that has opened so many is replaced: its memory grows with each
};

template <typename Kind>
class Handle;

/// The one hidden LibreOffice of a run: started when first needed, watched, replaced when it dies or hangs, ended with
/// the object or when it is idle. Every failure is Damage.
class LibreOffice {
public:
    explicit LibreOffice(Settings settings = {});
    ~LibreOffice();
    LibreOffice(const LibreOffice&) = delete;
    LibreOffice& operator=(const LibreOffice&) = delete;

    /// A null file inside of the handle where LibreOffice takes the file for something else or cannot read it.
    template <typename Kind = OpenFile>
    Handle<Kind> open(const std::filesystem::path& path);

    /// A folder for files that pass between the program and LibreOffice.
    const std::filesystem::path& folder();
    const Settings& settings() const noexcept { return settings_; }
    /// Ends the process unless it holds a file open.
    void end_if_idle();
    /// The process group; none before the start and after the end.
    std::optional<pid_t> process_group();

private:
    template <typename Kind>
    friend class Handle;

    struct Session {
        explicit Session(std::unique_ptr<OfficeProcess> started) : process(std::move(started)) {}
        std::unique_ptr<OfficeProcess> process;
        std::unique_ptr<Connection> connection;
        int files_opened = 0;
        std::atomic<int> files_open = 0; ///< the thread looks at it, too
    };

    std::shared_ptr<Session> session_for_file();
    std::shared_ptr<Session> start();
    bool is_current(const Session& session);
    void run(Session& session, const std::function<void()>& work) { run(session, work, settings_.call_limit); }
    void run(Session& session, const std::function<void()>& work, Time limit);
    void end(const Session& session);
    void drop_session();
    void watch(const std::stop_token& stop);

    Settings settings_;
    std::optional<ooxml::TemporaryFolder> folder_;
    std::mutex mutex_; ///< of the two below: the thread ends an idle session
    std::shared_ptr<Session> session_;
    std::atomic<bool> was_used_ = false; ///< since the thread looked last
    std::condition_variable_any stopping_;
    std::jthread watch_; ///< ends with the session
};

/// A file that LibreOffice holds open. A call on a file whose process is gone is Damage.
template <typename Kind>
class Handle {
public:
    Handle(LibreOffice& office, std::shared_ptr<LibreOffice::Session> session, std::unique_ptr<Kind> file)
        : office_(&office), session_(std::move(session)), file_(std::move(file))
    {
    }
    ~Handle() { close(); }
    Handle(Handle&& other) noexcept = default;
    Handle& operator=(Handle&&) = delete;

    explicit operator bool() const noexcept { return file_ != nullptr; }

    template <typename Work>
    std::invoke_result_t<Work, Kind&> call(Work&& work)
    {
        using Result = std::invoke_result_t<Work, Kind&>;
        if constexpr (std::is_void_v<Result>) {
            office_->run(*session_, [&] { work(*file_); });
        } else {
            std::optional<Result> result;
            office_->run(*session_, [&] { result.emplace(work(*file_)); });
            return std::move(*result);
        }
    }

    /// Unsaved.
    void close() noexcept
    {
        if (!file_) return;
        --session_->files_open;
        try {
            office_->run(*session_, [this] { file_.reset(); });
        } catch (const std::exception&) {
            file_.reset(); // its process is gone, and so nothing waits for an answer
        }
    }

private:
    LibreOffice* office_;
    std::shared_ptr<LibreOffice::Session> session_;
    std::unique_ptr<Kind> file_;
};

template <typename Kind>
Handle<Kind> LibreOffice::open(const std::filesystem::path& path)
{
    auto session = session_for_file();
    std::unique_ptr<Kind> file;
    ++session->files_opened;
    run(*session, [&] {
        auto opened = session->connection->open(path);
        file.reset(dynamic_cast<Kind*>(opened.get()));
        if (file) static_cast<void>(opened.release());
    });
    if (file) ++session->files_open;
    return {*this, std::move(session), std::move(file)};
}

/// What a file is opened with; all that is referred to outlives the file.
struct Surroundings {
    LibreOffice& office;
    Files& files;
    Printer& printer;
    FormulaServices services;
    std::shared_ptr<ooxml::PackageCache> packages; ///< what the files opened last hold as packages
};

// Files that the suite reads and writes. Failures name the file, or the picture's where that is at fault.

std::unique_ptr<Workbook> open_workbook(const Surroundings& around, Text path);
std::unique_ptr<TextDocument> open_document(const Surroundings& around, TextView path);

/// Extensions that say what is read and what is written, and how LibreOffice calls that.
struct Conversion {
    std::string from, to, filter{};
    bool calculates = false; ///< every formula of a workbook
};
/// What the suite writes of a file that it reads. Throws Damage.
std::string converted(LibreOffice& office, std::string_view bytes, const Conversion& conversion);
/// A workbook package (.xlsx, .xlsm) with every formula calculated anew, as LibreOffice stores it as .xlsx: each
/// formula cell holds its result. Throws Damage.
std::string recalculated(LibreOffice& office, std::string_view package);

} // namespace tarvik::libreoffice

namespace tarvik {

/// The engine that has the suite of this system read and write files: workbooks in .xls, .xlsx and .xlsm, binary
/// documents and packages. The suite works on copies of its own; the files are read and replaced as a whole. `office`,
/// `files` and `printer` must outlive it and what it opens.
FileOpeners libreoffice_files(libreoffice::LibreOffice& office, Files& files, Printer& printer,
                              FormulaServices services = {});

/// Whether the suite of this system edits files in place. One that does not converts them, calculates and prints.
bool suite_edits() noexcept;

} // namespace tarvik

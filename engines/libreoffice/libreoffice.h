#pragma once

#include "engines/libreoffice/bridge.h"
#include "engines/libreoffice/office_process.h"
#include "engines/packages/temporary_folder.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>
#include <type_traits>

namespace tarvik::libreoffice {

/// The plugin in a file. Throws Damage with what is to be installed where the plugin or LibreOffice is missing.
Plugin& load_plugin(const std::filesystem::path& file);

/// Beside the program that runs; lib/tarvik beside a program's folder that is named bin.
std::filesystem::path usual_plugin_file();

/// What a message calls the suite behind the plugin.
Text suite_title();

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

/// A thread that does one piece of work after the other while who asks for it waits and can look after other things.
class Worker {
public:
    using Time = std::chrono::milliseconds;
    using Clock = std::chrono::steady_clock;

    /// `rest` is called on the thread when there was no work for so long; again and again until it gives true.
    Worker(Time until_rest, std::function<bool()> rest);
    ~Worker();
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    struct Waiting {
        std::function<void(Time waited)> meanwhile; ///< called again and again
        Time limit;
        std::function<Clock::time_point()> clock;
        std::function<void(Time waited)>
            too_long; ///< called again and again behind the limit; it must make the work end
    };
    /// Does the work on the thread and comes back when it has ended; what it throws is thrown here.
    void run(std::function<void()> work, const Waiting& waiting);

private:
    void loop();

    Time until_rest_;
    std::function<bool()> rest_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::function<void()> work_; ///< none once it has begun
    std::exception_ptr failure_; ///< of the work that is done
    bool is_done_ = false;
    bool is_closing_ = false;
    std::thread thread_;
};

struct Settings {
    /// Called some twenty times a second while the caller waits for LibreOffice, with the time waited so far.
    std::function<void(Worker::Time waited)> meanwhile{};
    std::filesystem::path plugin = usual_plugin_file();
    Worker::Time start_limit{60'000}, call_limit{60'000};
    std::function<Worker::Clock::time_point()> clock = Worker::Clock::now; ///< that the limits are measured by
    Worker::Time until_rest{300'000};                                      ///< an idle process is ended then
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
    Handle<OpenWorkbook> open_workbook(const std::filesystem::path& path);
    Handle<OpenDocument> open_document(const std::filesystem::path& path);
    Handle<OpenFile> open(const std::filesystem::path& path);

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

    template <typename Kind>
    Handle<Kind> open_by(std::unique_ptr<Kind> (Connection::*open)(const std::filesystem::path&),
                         const std::filesystem::path& path);
    std::shared_ptr<Session> session_for_file();
    std::shared_ptr<Session> start();
    bool is_current(const Session& session);
    void connect(Session& session, Plugin& plugin);
    void run(Session& session, const std::function<void()>& work, Worker::Time limit);
    void end(const Session& session);
    void drop_session();
    bool rest();

    Settings settings_;
    std::optional<ooxml::TemporaryFolder> folder_;
    std::mutex mutex_; ///< of the two below: the thread ends an idle session
    std::shared_ptr<Session> session_;
    std::chrono::steady_clock::time_point last_use_;
    std::optional<Worker> worker_;
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
            office_->run(
                *session_, [&] { work(*file_); }, office_->settings_.call_limit);
        } else {
            std::optional<Result> result;
            office_->run(
                *session_, [&] { result.emplace(work(*file_)); }, office_->settings_.call_limit);
            return std::move(*result);
        }
    }

    /// Unsaved.
    void close() noexcept;

private:
    LibreOffice* office_;
    std::shared_ptr<LibreOffice::Session> session_;
    std::unique_ptr<Kind> file_;
};

} // namespace tarvik::libreoffice

#include "engines/libreoffice/libreoffice.h"

#include "engines/packages/file_kind.h"
#include "platform/failure.h"
#include "platform/files/disk_file.h"

#include <system_error>

namespace tarvik::libreoffice {

namespace fs = std::filesystem;

namespace {

constexpr Time between_attempts{20}, between_looks{50};

template <typename Work>
auto with_reason(const Work& work)
{
    try {
        return work();
    } catch (const std::system_error& error) {
        throw ooxml::Damage(U"临时文件无法读写（" + reason_of(error) + U"）。");
    }
}

} // namespace

ExchangeFolder::ExchangeFolder(const fs::path& parent)
{
    static std::atomic<unsigned> made{0};
    path_ = parent / std::to_string(++made);
    with_reason([&] { fs::create_directories(path_); });
}

ExchangeFolder::~ExchangeFolder()
{
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

fs::path ExchangeFolder::put(const fs::path& name, std::string_view bytes) const
{
    auto file = place(name);
    with_reason([&] { append_to_file(file, bytes); });
    return file;
}

std::string ExchangeFolder::take(const fs::path& name) const
{
    return with_reason([&] { return read_file(place(name)); });
}

LibreOffice::LibreOffice(Settings settings) : settings_(std::move(settings)) {}

LibreOffice::~LibreOffice()
{
    const std::lock_guard lock(mutex_);
    drop_session();
}

const fs::path& LibreOffice::folder()
{
    if (!folder_) folder_.emplace();
    return folder_->path();
}

std::optional<pid_t> LibreOffice::process_group()
{
    const std::lock_guard lock(mutex_);
    return session_ ? std::optional(session_->process->group()) : std::nullopt;
}

void LibreOffice::end_if_idle()
{
    const std::lock_guard lock(mutex_);
    if (session_ && session_->files_open == 0) drop_session();
}

std::shared_ptr<LibreOffice::Session> LibreOffice::session_for_file()
{
    {
        const std::lock_guard lock(mutex_);
        was_used_ = true;
        const bool is_worn = session_ && session_->files_opened >= settings_.most_files && session_->files_open == 0;
        if (session_ && (is_worn || session_->process->has_ended())) drop_session();
        if (session_) return session_;
    }
    return start();
}

std::shared_ptr<LibreOffice::Session> LibreOffice::start()
{
    Plugin& plugin = load_plugin(settings_.plugin);
    std::shared_ptr<Session> session;
    try {
        session = std::make_shared<Session>(std::make_unique<OfficeProcess>(plugin.program_folder(), folder()));
    } catch (const std::system_error& error) {
        throw ooxml::Damage(suite_title() + U" 无法启动（" + from_utf8(error.code().message()) + U"）。");
    }
    {
        const std::lock_guard lock(mutex_);
        session_ = session;
        was_used_ = true;
    }
    watch_ = std::jthread([this](const std::stop_token& stop) { watch(stop); });
    const auto connect = [&] {
        while (!(session->connection = plugin.connect(session->process->pipe()))) {
            if (session->process->has_ended()) throw ConnectionLost("the process has ended");
            std::this_thread::sleep_for(between_attempts);
        }
    };
    run(*session, connect, settings_.start_limit);
    return session;
}

bool LibreOffice::is_current(const Session& session)
{
    const std::lock_guard lock(mutex_);
    return session_.get() == &session;
}

// A thread of its own makes the call: who waits for it can look after other things and give it up.
void LibreOffice::run(Session& session, const std::function<void()>& work, Time limit)
{
    if (!is_current(session)) throw ooxml::Damage(suite_title() + U" 已经重新启动，这个文件没有保存。");
    Connection* const connection = session.connection.get();
    std::optional<Text> given_up;
    try {
        auto done = std::async(std::launch::async, [&] { connection ? connection->perform(work) : work(); });
        const auto started = settings_.clock();
        while (done.wait_for(between_looks) != std::future_status::ready) {
            was_used_ = true;
            const auto waited = std::chrono::duration_cast<Time>(settings_.clock() - started);
            if (settings_.meanwhile) settings_.meanwhile(waited);
            if (waited <= limit) continue;
            given_up = connection ? connection->give_up(waited) : Text();
            if (given_up) session.process->kill();
        }
        done.get();
    } catch (const std::runtime_error& error) {
        const bool is_lost = dynamic_cast<const ConnectionLost*>(&error) || session.process->has_ended();
        if (!is_lost && !given_up)
            throw ooxml::Damage(suite_title() + U" 拒绝了操作（" + from_utf8(error.what()) + U"）。");
        const bool had_started = session.connection != nullptr;
        end(session);
        if (given_up) throw ooxml::Damage(suite_title() + U" 没有响应，已经将它结束，请重试。" + *given_up);
        throw ooxml::Damage(had_started ? suite_title() + U" 意外退出，请重试。" : suite_title() + U" 无法启动。");
    }
    if (given_up) end(session); // it is done, or needs no doing any more, but the process is gone
}

void LibreOffice::end(const Session& session)
{
    const std::lock_guard lock(mutex_);
    if (session_.get() == &session) drop_session();
}

// The process goes first: then none of the objects in it waits for an answer when it is let go.
void LibreOffice::drop_session()
{
    if (session_) session_->process->kill();
    session_.reset();
}

// Ends the session when nothing was asked of it for so long.
void LibreOffice::watch(const std::stop_token& stop)
{
    std::unique_lock lock(mutex_);
    while (session_ && !stop.stop_requested()) {
        stopping_.wait_for(lock, stop, settings_.until_rest, [] { return false; });
        if (!was_used_.exchange(false) && session_ && session_->files_open == 0) drop_session();
    }
}

std::string converted(LibreOffice& office, std::string_view bytes, const Conversion& conversion)
{
    const ExchangeFolder folder(office.folder());
    auto file = office.open(folder.put("read" + conversion.from, bytes));
    if (!file) throw ooxml::Damage(suite_title() + U" 不能打开它。");
    const auto written = "written" + conversion.to;
    file.call([&](OpenFile& opened) {
        if (conversion.calculates) opened.calculate_all();
        opened.store(folder.place(written), conversion.filter);
    });
    file.close(); // a suite may hold open what it wrote
    return folder.take(written);
}

std::string recalculated(LibreOffice& office, std::string_view package)
{
    return converted(office, package,
                     {has_macros(package) ? ".xlsm" : ".xlsx", ".xlsx", "Calc MS Excel 2007 XML", true});
}

} // namespace tarvik::libreoffice

namespace tarvik {

FileOpeners libreoffice_files(libreoffice::LibreOffice& office, Files& files, Printer& printer,
                              FormulaServices services)
{
    const libreoffice::Surroundings around{office, files, printer, std::move(services),
                                           std::make_shared<ooxml::PackageCache>(files)};
    return {[around](TextView path) { return libreoffice::open_workbook(around, path.str()); },
            [around](TextView path) { return libreoffice::open_document(around, path); }};
}

} // namespace tarvik

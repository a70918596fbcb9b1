#include "engines/libreoffice/libreoffice.h"

#include "engines/packages/damage.h"
#include "platform/files/disk_file.h"
#include "platform/files/file_failure.h"

#include <system_error>

namespace tarvik::libreoffice {

namespace fs = std::filesystem;

namespace {

constexpr std::chrono::milliseconds between_attempts{20};

template <typename Work>
auto with_reason(const Work& work)
{
    try {
        return work();
    } catch (const std::system_error& error) {
        throw ooxml::Damage(U"临时文件无法读写（" + reason_of(error) + U"）。");
    }
}

std::exception_ptr failure_of(const std::function<void()>& work)
{
    try {
        work();
    } catch (...) {
        return std::current_exception();
    }
    return nullptr;
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

Worker::Worker(Time until_rest, std::function<bool()> rest)
    : until_rest_(until_rest), rest_(std::move(rest)), thread_([this] { loop(); })
{
}

Worker::~Worker()
{
    {
        const std::lock_guard lock(mutex_);
        is_closing_ = true;
    }
    changed_.notify_all();
    thread_.join();
}

void Worker::run(std::function<void()> work, const Waiting& waiting)
{
    constexpr Time between_looks{50};
    const auto started = waiting.clock();
    std::unique_lock lock(mutex_);
    work_ = std::move(work);
    is_done_ = false;
    changed_.notify_all();
    while (!changed_.wait_for(lock, between_looks, [this] { return is_done_; })) {
        lock.unlock();
        const auto waited = std::chrono::duration_cast<Time>(waiting.clock() - started);
        if (waiting.meanwhile) waiting.meanwhile(waited);
        if (waited > waiting.limit) waiting.too_long(waited);
        lock.lock();
    }
    if (const auto failure = std::exchange(failure_, nullptr)) std::rethrow_exception(failure);
}

void Worker::loop()
{
    const auto is_asked = [this] { return work_ || is_closing_; };
    std::unique_lock lock(mutex_);
    for (bool may_rest = false;;) {
        if (!may_rest) changed_.wait(lock, is_asked);
        else if (!changed_.wait_for(lock, until_rest_, is_asked)) {
            lock.unlock();
            may_rest = !rest_();
            lock.lock();
            continue;
        }
        if (is_closing_) return;
        auto work = std::exchange(work_, nullptr);
        lock.unlock();
        auto failure = failure_of(work);
        work = nullptr;
        lock.lock();
        // Work and failure are gone from this thread now: neither is freed here while the waiting one uses it.
        failure_ = std::move(failure);
        is_done_ = true;
        changed_.notify_all();
        may_rest = true;
    }
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
        last_use_ = std::chrono::steady_clock::now();
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
        last_use_ = std::chrono::steady_clock::now();
    }
    if (!worker_) worker_.emplace(settings_.until_rest, [this] { return rest(); });
    run(
        *session, [&] { connect(*session, plugin); }, settings_.start_limit);
    return session;
}

bool LibreOffice::is_current(const Session& session)
{
    const std::lock_guard lock(mutex_);
    return session_.get() == &session;
}

void LibreOffice::connect(Session& session, Plugin& plugin)
{
    while (!(session.connection = plugin.connect(session.process->pipe()))) {
        if (session.process->has_ended()) throw ConnectionLost("the process has ended");
        std::this_thread::sleep_for(between_attempts);
    }
}

void LibreOffice::run(Session& session, const std::function<void()>& work, Worker::Time limit)
{
    if (!is_current(session)) throw ooxml::Damage(suite_title() + U" 已经重新启动，这个文件没有保存。");
    std::optional<Text> given_up;
    const auto too_long = [&, connection = session.connection.get()](Worker::Time waited) {
        given_up = connection ? connection->give_up(waited) : Text();
        if (given_up) session.process->kill();
    };
    try {
        worker_->run(work, {settings_.meanwhile, limit, settings_.clock, too_long});
    } catch (const std::runtime_error& error) {
        const bool is_lost = dynamic_cast<const ConnectionLost*>(&error) || session.process->has_ended();
        if (!is_lost && !given_up)
            throw ooxml::Damage(suite_title() + U" 拒绝了操作（" + from_utf8(error.what()) + U"）。");
        const bool had_started = session.connection != nullptr;
        end(session);
        if (given_up) throw ooxml::Damage(suite_title() + U" 没有响应，已经将它结束，请重试。" + *given_up);
        throw ooxml::Damage(had_started ? suite_title() + U" 意外退出，请重试。" : suite_title() + U" 无法启动。");
    }
    if (given_up) return end(session); // it is done, or needs no doing any more, but the process is gone
    const std::lock_guard lock(mutex_);
    last_use_ = std::chrono::steady_clock::now();
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

bool LibreOffice::rest()
{
    const std::lock_guard lock(mutex_);
    const bool was_used = std::chrono::steady_clock::now() - last_use_ < settings_.until_rest;
    if (session_ && (session_->files_open > 0 || was_used)) return false;
    drop_session();
    return true;
}

template <typename Kind>
Handle<Kind> LibreOffice::open_by(std::unique_ptr<Kind> (Connection::*opening)(const fs::path&), const fs::path& path)
{
    auto session = session_for_file();
    std::unique_ptr<Kind> file;
    ++session->files_opened;
    run(
        *session, [&] { file = (session->connection.get()->*opening)(path); }, settings_.call_limit);
    if (file) ++session->files_open;
    return {*this, std::move(session), std::move(file)};
}

Handle<OpenWorkbook> LibreOffice::open_workbook(const fs::path& path)
{
    return open_by(&Connection::open_workbook, path);
}

Handle<OpenDocument> LibreOffice::open_document(const fs::path& path)
{
    return open_by(&Connection::open_document, path);
}

Handle<OpenFile> LibreOffice::open(const fs::path& path)
{
    return open_by(&Connection::open, path);
}

template <typename Kind>
void Handle<Kind>::close() noexcept
{
    if (!file_) return;
    --session_->files_open;
    try {
        office_->run(
            *session_, [this] { file_.reset(); }, office_->settings_.call_limit);
    } catch (const std::exception&) {
        file_.reset(); // its process is gone, and so nothing waits for an answer
    }
}

template class Handle<OpenWorkbook>;
template class Handle<OpenDocument>;
template class Handle<OpenFile>;

} // namespace tarvik::libreoffice

#include "engines/suite/application.h"

#include "engines/packages/damage.h"

#include <windows.h>

#include <objbase.h>
#include <tlhelp32.h>

#include <atomic>
#include <chrono>
#include <future>
#include <set>
#include <thread>

namespace tarvik::windows {

namespace {

constexpr int no_macros = 3; // of msoAutomationSecurity: none runs, and none is asked about
constexpr DWORD patience_at_end = 10'000;
constexpr std::chrono::milliseconds between_looks{20};

std::shared_ptr<void> closing(HANDLE handle)
{
    if (!handle || handle == INVALID_HANDLE_VALUE) return nullptr;
    return {handle, [](void* held) { ::CloseHandle(held); }};
}

std::set<DWORD> processes_of(const wchar_t* program)
{
    std::set<DWORD> found;
    const auto snapshot = closing(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = snapshot && ::Process32FirstW(snapshot.get(), &entry); more;
         more = ::Process32NextW(snapshot.get(), &entry))
        if (::lstrcmpiW(entry.szExeFile, program) == 0) found.insert(entry.th32ProcessID);
    return found;
}

/// The one that is new. The user may have started the same program at this moment: then nobody knows whose is whose,
/// and no process is taken for ours.
std::shared_ptr<void> new_process(const wchar_t* program, const std::set<DWORD>& before)
{
    std::set<DWORD> found = processes_of(program);
    std::erase_if(found, [&](DWORD one) { return before.contains(one); });
    if (found.size() != 1) return nullptr;
    return closing(::OpenProcess(PROCESS_SET_QUOTA | PROCESS_TERMINATE | SYNCHRONIZE, FALSE, *found.begin()));
}

bool put_into_job(const std::shared_ptr<void>& process, const std::string& job)
{
    const std::wstring name(job.begin(), job.end());
    const auto held = closing(::OpenJobObjectW(JOB_OBJECT_ASSIGN_PROCESS, FALSE, name.c_str()));
    return process && held && ::AssignProcessToJobObject(held.get(), process.get());
}

[[noreturn]] void give_up()
{
    throw libreoffice::ConnectionLost("ended while it started");
}

/// One of the programs that drive the suite starts an application at a time, or none would know whose the new process
/// is. Whoever waits gives up when its job is ended.
std::shared_ptr<void> turn_to_start(const std::shared_ptr<void>& job_ended)
{
    const auto turn = closing(::CreateMutexW(nullptr, FALSE, L"tarvik-suite-start"));
    const HANDLE awaited[] = {turn.get(), job_ended.get()};
    if (::WaitForMultipleObjects(2, awaited, FALSE, INFINITE) == WAIT_OBJECT_0 + 1) give_up();
    return {turn.get(), [turn](void* held) { ::ReleaseMutex(held); }};
}

void quit(const ComObject& application, const ApplicationKind& kind) noexcept
{
    try {
        application.call(L"Quit", kind.quit);
    } catch (const std::runtime_error&) { // NOLINT(bugprone-empty-catch): whoever asks looks after its process
    }
}

/// A start that may never come to its end runs on a thread of its own. When nobody waits for it any more, what it makes
/// later is ended there.
struct Start {
    std::promise<std::optional<ComObject>> made;
    std::atomic<bool> is_settled = false;

    void run(const ApplicationKind& kind)
    {
        ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        try {
            auto object = create_application(kind.name);
            if (!is_settled.exchange(true)) made.set_value(std::move(object));
            else if (object) quit(*object, kind);
        } catch (const std::exception&) {
            if (!is_settled.exchange(true)) made.set_exception(std::current_exception());
        }
        ::CoUninitialize();
    }
};

/// Comes back, too, when the job is ended.
std::optional<ComObject> create_within_job(const ApplicationKind& kind, const std::shared_ptr<void>& job_ended,
                                           const std::set<DWORD>& before)
{
    const auto start = std::make_shared<Start>();
    auto made = start->made.get_future();
    std::thread([start, &kind] { start->run(kind); }).detach();
    while (made.wait_for(between_looks) != std::future_status::ready) {
        const bool is_over = ::WaitForSingleObject(job_ended.get(), 0) == WAIT_OBJECT_0;
        if (!is_over || start->is_settled.exchange(true)) continue;
        if (const auto process = new_process(kind.program, before)) ::TerminateProcess(process.get(), 1);
        give_up();
    }
    return made.get();
}

} // namespace

std::wstring end_of_job(const std::string& job)
{
    return std::wstring(job.begin(), job.end()) + L"-end";
}

// An application that lives in a process which is not new may be the one that the user works with: it stays.
Application::Started Application::start(const ApplicationKind& kind, const std::string& job)
{
    const auto job_ended = closing(::OpenEventW(SYNCHRONIZE, FALSE, end_of_job(job).c_str()));
    if (!job_ended) give_up();
    const auto turn = turn_to_start(job_ended);
    const auto before = processes_of(kind.program);
    std::optional<ComObject> object;
    try {
        object = create_within_job(kind, job_ended, before);
    } catch (const Refusal& refusal) {
        throw ooxml::Damage(Text(kind.title) + U" 无法启动（" + from_utf8(refusal.what()) + U"）。");
    }
    if (!object) throw ooxml::Damage(U"没有找到 " + Text(kind.title) + U"；请安装 Microsoft Office。");
    auto process = new_process(kind.program, before);
    if (!put_into_job(process, job)) {
        if (object->get(L"UserControl").as_count() == 0) quit(*object, kind);
        throw ooxml::Damage(U"认不出刚启动的 " + Text(kind.title) + U"，可能同时启动了另一个，请重试。");
    }
    return {std::move(*object), std::move(process)};
}

Application::Application(const ApplicationKind& kind, Started started)
    : kind_(kind), object_(std::move(started.object)), process_(std::move(started.process))
{
}

Application::Application(const ApplicationKind& kind, const std::string& job) : Application(kind, start(kind, job))
{
    object_->put(L"Visible", false);
    object_->put(L"DisplayAlerts", kind.no_alerts);
    object_->put(L"AutomationSecurity", no_macros);
}

// The process ends when it has quit and nothing refers to it; one that does not end in time is ended.
Application::~Application()
{
    quit(*object_, kind_);
    object_.reset();
    if (::WaitForSingleObject(process_.get(), patience_at_end) != WAIT_OBJECT_0) ::TerminateProcess(process_.get(), 1);
}

} // namespace tarvik::windows

#include "engines/libreoffice/load_plugin.h"
#include "engines/libreoffice/office_process.h"
#include "engines/suite/held_file.h"
#include "platform/files/path_text.h"

#include <windows.h>

#include <objbase.h>

#include <system_error>

/// Here the suite behind the engine is the one that is installed: its applications stand in a job that takes the place
/// of a process group.
namespace tarvik::libreoffice {

namespace fs = std::filesystem;

namespace {

/// The files are copies of the program's own. Two of one name cannot be open at once, so each that stays open gets a
/// number; one that is only printed keeps the name, which may be printed with it.
class SuiteConnection final : public Connection {
public:
    explicit SuiteConnection(std::string job) : job_(std::move(job)) {}

    std::unique_ptr<OpenWorkbook> open_workbook(const fs::path& path) override
    {
        return windows::open_workbook(application(workbooks_, windows::workbooks), numbered(path));
    }
    std::unique_ptr<OpenDocument> open_document(const fs::path& path) override
    {
        return windows::open_document(application(documents_, windows::documents), numbered(path));
    }
    std::unique_ptr<OpenFile> open(const fs::path& path) override
    {
        const bool is_workbook = lower(text_of(path.extension())).starts_with(U".xls");
        if (is_workbook) return windows::open_workbook(application(workbooks_, windows::workbooks), path);
        return windows::open_document(application(documents_, windows::documents), path);
    }

private:
    using Running = std::weak_ptr<windows::Application>;

    // It lives as long as a file is open in it.
    std::shared_ptr<windows::Application> application(Running& running, const windows::ApplicationKind& kind)
    {
        auto held = running.lock();
        if (!held) running = held = std::make_shared<windows::Application>(kind, job_);
        return held;
    }

    fs::path numbered(const fs::path& path)
    {
        auto named = path.parent_path() / (std::to_wstring(++opened_) + L"-" + path.filename().native());
        fs::rename(path, named);
        return named;
    }

    std::string job_;
    Running workbooks_, documents_;
    int opened_ = 0;
};

class SuitePlugin final : public Plugin {
public:
    fs::path program_folder() const override { return {}; }

    std::unique_ptr<Connection> connect(const std::string& pipe) override
    {
        const HRESULT result = ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
        if (FAILED(result)) windows::refuse(result, {});
        return std::make_unique<SuiteConnection>(pipe);
    }
};

} // namespace

Plugin& load_plugin(const fs::path& /*file*/)
{
    static SuitePlugin plugin;
    return plugin;
}

fs::path usual_plugin_file()
{
    return {};
}

std::string_view suite_option()
{
    return "office";
}

Text suite_title()
{
    return U"Office";
}

namespace {

/// The job and the event that tells of its end, for an application that stands in no job yet.
struct Job {
    HANDLE job = nullptr, end = nullptr;

    Job() = default;
    ~Job()
    {
        for (const HANDLE held : {job, end})
            if (held) ::CloseHandle(held);
    }
    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;
};

HANDLE require(HANDLE made)
{
    if (!made) throw std::system_error(static_cast<int>(::GetLastError()), std::system_category());
    return made;
}

} // namespace

OfficeProcess::OfficeProcess(const fs::path& /*programs*/, const fs::path& /*folder*/)
{
    static int made = 0;
    pipe_ = "tarvik-" + std::to_string(::GetCurrentProcessId()) + "-" + std::to_string(++made);
    const std::wstring name(pipe_.begin(), pipe_.end());
    const auto job = std::make_shared<Job>();
    job->job = require(::CreateJobObjectW(nullptr, name.c_str()));
    job->end = require(::CreateEventW(nullptr, TRUE, FALSE, windows::end_of_job(pipe_).c_str()));
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
    limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
    ::SetInformationJobObject(job->job, JobObjectExtendedLimitInformation, &limits, sizeof(limits));
    job_ = job;
}

OfficeProcess::~OfficeProcess()
{
    kill();
}

// Applications come and go with the files; one that ends by itself is told of by the call that it does not answer.
bool OfficeProcess::has_ended()
{
    return false;
}

void OfficeProcess::kill() const noexcept
{
    const auto* const job = static_cast<const Job*>(job_.get());
    ::SetEvent(job->end);
    ::TerminateJobObject(job->job, 1);
}

} // namespace tarvik::libreoffice

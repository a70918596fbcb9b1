#include "engines/libreoffice/libreoffice.h"
#include "engines/packages/damage.h"
#include "engines/suite/com.h"
#include "platform/files/paths.h"

#include <objbase.h>

#include <algorithm>

/// Here the suite behind the engine is the one that is installed. Its applications are in no process group: the
/// connection gives up what hangs, and each quits with it.
namespace tarvik::windows {

using libreoffice::OpenFile;
using libreoffice::Printing;
namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds patience_at_end{10};
constexpr long no_alerts = 0;
constexpr long no_macros = 3; // of msoAutomationSecurity: none runs, and none is asked about

/// What sets one application of the suite apart from the other.
struct ApplicationKind {
    const wchar_t* name;
    const char32_t* title;
    const wchar_t* files; ///< its collection of open files
    /// The arguments that have it open a file to read only, and quit without saving.
    ComObject::Values (*open)(const fs::path& path);
    ComObject::Values quit;
};
/// The applications want "\\" between folders.
_variant_t value_of(fs::path path)
{
    return path.make_preferred().c_str();
}

// A file that others may not change asks for a password, unless it is only read. None of it gets among the recent
// files.
ComObject::Values open_workbook(const fs::path& path)
{
    constexpr long no_links = 0;
    const _variant_t missing(DISP_E_PARAMNOTFOUND, VT_ERROR);
    return {value_of(path), no_links, true, missing, L"", L"", true, missing, missing, false, false, missing, false};
}

ComObject::Values open_document(const fs::path& path)
{
    return {value_of(path), false, true, false, L"", L"", false, L"", L""};
}

const ApplicationKind workbooks{L"Excel.Application", U"Excel", L"Workbooks", open_workbook, {}};
const ApplicationKind documents{L"Word.Application", U"Word", L"Documents", open_document, {0L}};

/// An application of our own that is never shown, asks nothing and runs no macros. It quits with the object, unless
/// somebody has opened a file in it: then it is shown and left to its user.
class Application : public std::enable_shared_from_this<Application> {
public:
    /// Throws Damage where the application is not installed or does not start.
    Application(const ApplicationKind& kind, std::shared_ptr<Patience> patience);
    ~Application();
    Application(const Application&) = delete;
    Application& operator=(const Application&) = delete;

    /// Opens a file for reading only; it keeps the application.
    std::unique_ptr<OpenFile> open(const fs::path& path);
    bool is_of(const ApplicationKind& kind) const noexcept { return &kind == &kind_; }
    const ComObject& object() const noexcept { return *object_; }
    const std::shared_ptr<Patience>& patience() const noexcept { return patience_; }

private:
    ComObject files() const { return object_->object(kind_.files); }
    bool is_somebodys() const { return files().count(L"Count") > 0; }
    void let_go() const;
    void look_at_window(const ComObject& owner);

    const ApplicationKind& kind_;
    std::shared_ptr<Patience> patience_;
    std::optional<ComObject> object_;
    ApplicationProcess process_;
};

/// The suite's number of a format, by the extension that it goes with.
struct FormatRow {
    std::wstring_view extension;
    long number;
};
constexpr FormatRow formats[] = {
    {L".xls", 56}, {L".xlsx", 51}, {L".xlsm", 52}, {L".doc", 0}, {L".docx", 12}, {L".docm", 13},
};

class HeldFile final : public OpenFile {
public:
    HeldFile(std::shared_ptr<Application> application, ComObject file)
        : application_(std::move(application)), file_(std::move(file))
    {
        application_->patience()->begin(Patience::Time(0), {});
    }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    ~HeldFile() override
    {
        try {
            file_.call(L"Close", {false});
        } catch (const std::exception&) { // NOLINT(bugprone-empty-catch): the application counts what is open
        }
    }

    void store(const fs::path& path, const std::string& /*filter*/) override
    {
        const auto* const format = std::ranges::find(formats, path.extension().native(), &FormatRow::extension);
        if (format == std::end(formats)) throw std::runtime_error("no format for " + path.string());
        file_.call(L"SaveAs", {value_of(path), format->number});
    }

    void calculate_all() override { application_->object().call(L"CalculateFull"); }

    // Some printers ask for the name of a file, in a window that nobody sees. In the background a document would be cut
    // off when it is closed.
    Printing print(const std::string& /*printer*/) override
    {
        application_->patience()->begin(Patience::Time(0),
                                        U"默认打印机可能在等待文件名（例如 Microsoft Print to PDF），请换一台打印机。");
        if (application_->is_of(documents)) file_.call(L"PrintOut", {false});
        else file_.object(L"Worksheets").object(L"Item", {1L}).call(L"PrintOut");
        return Printing::Done;
    }

private:
    std::shared_ptr<Application> application_;
    ComObject file_;
};

std::optional<ComObject> create(const ApplicationKind& kind, const std::shared_ptr<Patience>& patience)
{
    try {
        return create_application(kind.name, patience);
    } catch (const Refusal& refusal) {
        throw ooxml::Damage(Text(kind.title) + U" 无法启动（" + from_utf8(refusal.what()) + U"）。");
    }
}

Application::Application(const ApplicationKind& kind, std::shared_ptr<Patience> patience)
    : kind_(kind), patience_(std::move(patience)), object_(create(kind, patience_))
{
    if (!object_) throw ooxml::Damage(U"没有找到 " + Text(kind.title) + U"；请安装 Microsoft Office。");
    if (is_somebodys()) {
        let_go();
        throw ooxml::Damage(Text(kind.title) + U" 正由别人使用，请关闭后重试。");
    }
    object_->put(L"DisplayAlerts", no_alerts);
    object_->put(L"AutomationSecurity", no_macros);
    if (is_of(workbooks)) look_at_window(*object_);
}

// Without a question an application that quits loses what is open in it.
Application::~Application()
{
    bool may_end = false;
    patience_->limit(patience_at_end);
    try {
        may_end = !is_somebodys();
        if (may_end) object_->call(L"Quit", kind_.quit);
        else let_go();
    } catch (const std::exception&) {
        if (may_end) patience_->give_up(Patience::Time::max());
    }
}

std::unique_ptr<OpenFile> Application::open(const fs::path& path)
{
    auto file = files().object(L"Open", kind_.open(path));
    try {
        if (is_of(documents)) look_at_window(file.object(L"ActiveWindow"));
    } catch (const Refusal&) { // NOLINT(bugprone-empty-catch): then its process stays unknown
    }
    return std::make_unique<HeldFile>(shared_from_this(), std::move(file));
}

// One that is not shown would end when nothing refers to it any more, whatever is open in it.
void Application::let_go() const
{
    object_->put(L"Visible", true);
}

// The owner has a window of the application, whose process is the application's. Without a window of that name the
// process stays unknown and is never ended.
void Application::look_at_window(const ComObject& owner)
{
    if (process_.handle) return;
    try {
        // NOLINTNEXTLINE(performance-no-int-to-ptr): a window's number is passed as one
        const auto window = reinterpret_cast<HWND>(static_cast<INT_PTR>(owner.count(L"Hwnd")));
        DWORD process = 0;
        if (::GetWindowThreadProcessId(window, &process) == 0) return;
        const HANDLE handle = ::OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process);
        if (!handle) return;
        process_ = {{handle, [](void* held) { ::CloseHandle(held); }}, window};
    } catch (const Refusal&) { // NOLINT(bugprone-empty-catch): older applications lack it
    }
    patience_->know(process_);
}

} // namespace

} // namespace tarvik::windows

namespace tarvik::libreoffice {

namespace fs = std::filesystem;

namespace {

/// An application of the suite lives from the first file to the end of the connection.
class SuiteConnection final : public Connection {
public:
    std::unique_ptr<OpenFile> open(const fs::path& path) override
    {
        const bool is_workbook = lower(text_of(path.extension())).starts_with(U".xls");
        auto& running = is_workbook ? workbooks_ : documents_;
        use(running, is_workbook ? windows::workbooks : windows::documents);
        return running->open(path);
    }

    std::optional<Text> give_up(std::chrono::milliseconds waited) override
    {
        const std::lock_guard lock(mutex_);
        return in_use_ ? in_use_->give_up(waited) : Text();
    }

private:
    // A first start may take long, and may have a question.
    void use(std::shared_ptr<windows::Application>& running, const windows::ApplicationKind& kind)
    {
        constexpr std::chrono::minutes for_start{3};
        const auto patience = running ? running->patience() : std::make_shared<windows::Patience>();
        const Text words = U"它可能停在激活、登录或安全模式的窗口上：请先自己打开一次 " + Text(kind.title) +
                           U"，回答它的问题，再关闭它。";
        patience->begin(running ? std::chrono::minutes(0) : for_start, running ? Text() : words);
        {
            const std::lock_guard lock(mutex_);
            in_use_ = patience;
        }
        if (!running) running = std::make_shared<windows::Application>(kind, patience);
    }

    std::mutex mutex_; ///< of the next
    std::shared_ptr<windows::Patience> in_use_;
    std::shared_ptr<windows::Application> workbooks_, documents_;
};

class SuitePlugin final : public Plugin {
public:
    fs::path program_folder() const override { return {}; }

    std::unique_ptr<Connection> connect(const std::string& /*pipe*/) override
    {
        CO_MTA_USAGE_COOKIE kept{}; // never given back: whichever thread makes a call may let go of objects
        const HRESULT result = ::CoIncrementMTAUsage(&kept);
        if (FAILED(result)) windows::refuse(result, {});
        return std::make_unique<SuiteConnection>();
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

Text suite_title()
{
    return U"Office";
}

OfficeProcess::OfficeProcess(const fs::path& /*programs*/, const fs::path& /*folder*/) {}

OfficeProcess::~OfficeProcess() = default;

bool OfficeProcess::has_ended()
{
    return false; // a call that is not answered tells of an application that has ended by itself
}

void OfficeProcess::kill() const noexcept {}

} // namespace tarvik::libreoffice

#include "engines/suite/application.h"

#include "engines/packages/damage.h"

#include <algorithm>

namespace tarvik::windows {

using libreoffice::OpenFile;
using libreoffice::Printing;
namespace fs = std::filesystem;

namespace {

constexpr std::chrono::seconds patience_at_end{10};
constexpr int no_alerts = 0;
constexpr int no_macros = 3; // of msoAutomationSecurity: none runs, and none is asked about

// A file that others may not change asks for a password, unless it is only read. None of it gets among the recent
// files.
ComObject::Values open_workbook(const fs::path& path)
{
    constexpr int no_links = 0;
    const auto missing = ComValue::missing();
    return {path, no_links, true, missing, L"", L"", true, missing, missing, false, false, missing, false};
}

ComObject::Values open_document(const fs::path& path)
{
    return {path, false, true, false, L"", L"", false, L"", L""};
}

/// The suite's number of a format, by the extension that it goes with.
struct FormatRow {
    std::wstring_view extension;
    int number;
};
constexpr FormatRow formats[] = {
    {L".xls", 56}, {L".xlsx", 51}, {L".xlsm", 52}, {L".doc", 0}, {L".docx", 12}, {L".docm", 13},
};

class HeldFile final : public OpenFile {
public:
    HeldFile(std::shared_ptr<Application> application, ComObject file)
        : application_(std::move(application)), file_(std::move(file))
    {
        application_->patience().begin(Patience::Time(0), {});
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
        file_.call(L"SaveAs", {path, format->number});
    }

    void calculate_all() override { application_->object().call(L"CalculateFull"); }

    // Some printers ask for the name of a file, in a window that nobody sees. In the background a document would be cut
    // off when it is closed.
    Printing print(const std::string& /*printer*/) override
    {
        application_->patience().begin(Patience::Time(0),
                                       U"默认打印机可能在等待文件名（例如 Microsoft Print to PDF），请换一台打印机。");
        if (application_->is_of(documents)) file_.call(L"PrintOut", {false});
        else file_.object(L"Worksheets").object(L"Item", {1}).call(L"PrintOut");
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

} // namespace

const ApplicationKind workbooks{L"Excel.Application", U"Excel", L"Workbooks", open_workbook, {}};
const ApplicationKind documents{L"Word.Application", U"Word", L"Documents", open_document, {0}};

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
        const auto window = reinterpret_cast<HWND>(static_cast<INT_PTR>(owner.get(L"Hwnd").as_count()));
        DWORD process = 0;
        if (::GetWindowThreadProcessId(window, &process) == 0) return;
        const HANDLE handle = ::OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, process);
        if (!handle) return;
        process_ = {{handle, [](void* held) { ::CloseHandle(held); }}, window};
    } catch (const Refusal&) { // NOLINT(bugprone-empty-catch): older applications lack it
    }
    patience_->know(process_);
}

} // namespace tarvik::windows

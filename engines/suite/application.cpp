#include "engines/suite/application.h"

#include "engines/packages/damage.h"

namespace tarvik::windows {

const ApplicationKind workbooks{L"Excel.Application", U"Excel", L"Workbooks", {}};
const ApplicationKind documents{L"Word.Application", U"Word", L"Documents", {0}};

namespace {

constexpr std::chrono::seconds patience_at_end{10};
constexpr int no_alerts = 0;
constexpr int no_macros = 3; // of msoAutomationSecurity: none runs, and none is asked about

std::optional<ComObject> create(const ApplicationKind& kind, const std::shared_ptr<Patience>& patience)
{
    try {
        return create_application(kind.name, patience);
    } catch (const Refusal& refusal) {
        throw ooxml::Damage(Text(kind.title) + U" 无法启动（" + from_utf8(refusal.what()) + U"）。");
    }
}

} // namespace

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
    if (&kind == &workbooks) look_at_window(*object_);
}

bool Application::is_somebodys() const
{
    return files().get(L"Count").as_count() > 0;
}

// One that is not shown would end when nothing refers to it any more, whatever is open in it.
void Application::let_go() const
{
    object_->put(L"Visible", true);
}

// Without a window of that name the process stays unknown and is never ended.
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

} // namespace tarvik::windows

#include "engines/libreoffice/libreoffice.h"
#include "engines/libreoffice/office_process.h"
#include "engines/suite/application.h"
#include "platform/files/path_text.h"

#include <objbase.h>

/// Here the suite behind the engine is the one that is installed. Its applications are in no process group: the
/// connection gives up what hangs, and each quits with it.
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
        return running.application->open(path);
    }

    std::optional<Text> give_up(std::chrono::milliseconds waited) override
    {
        const std::lock_guard lock(mutex_);
        return in_use_ ? in_use_->give_up(waited) : Text();
    }

private:
    struct Running {
        std::shared_ptr<windows::Patience> patience;
        std::shared_ptr<windows::Application> application;
    };

    // A first start may take long, and may have a question.
    void use(Running& running, const windows::ApplicationKind& kind)
    {
        constexpr std::chrono::minutes for_start{3};
        const bool is_start = !running.application;
        if (is_start) running.patience = std::make_shared<windows::Patience>();
        const Text words = U"它可能停在激活、登录或安全模式的窗口上：请先自己打开一次 " + Text(kind.title) +
                           U"，回答它的问题，再关闭它。";
        running.patience->begin(is_start ? for_start : std::chrono::minutes(0), is_start ? words : Text());
        {
            const std::lock_guard lock(mutex_);
            in_use_ = running.patience;
        }
        if (is_start) running.application = std::make_shared<windows::Application>(kind, running.patience);
    }

    std::mutex mutex_; ///< of the next
    std::shared_ptr<windows::Patience> in_use_;
    Running workbooks_, documents_;
};

class SuitePlugin final : public Plugin {
public:
    fs::path program_folder() const override { return {}; }

    std::unique_ptr<Connection> connect(const std::string& /*pipe*/) override
    {
        const HRESULT result = ::CoInitializeEx(nullptr, COINIT_MULTITHREADED);
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

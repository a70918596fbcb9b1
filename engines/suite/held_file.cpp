#include "engines/suite/held_file.h"

#include <algorithm>

namespace tarvik::windows {

using libreoffice::OpenFile;
using libreoffice::Printing;
namespace fs = std::filesystem;

namespace {

/// A format: the name that the engine calls it by, and the suite's number.
struct FormatRow {
    std::string_view name;
    int number;
};
constexpr FormatRow formats[] = {
    {"MS Excel 97", 56}, {"Calc MS Excel 2007 XML", 51}, {"Calc MS Excel 2007 VBA XML", 52},
    {"MS Word 97", 0},   {"MS Word 2007 XML", 12},       {"MS Word 2007 XML VBA", 13},
};

class HeldFile : public OpenFile {
public:
    HeldFile(std::shared_ptr<Application> application, std::shared_ptr<Patience> patience, ComObject file)
        : application_(std::move(application)), patience_(std::move(patience)), file_(std::move(file))
    {
        patience_->begin(Patience::Time(0), {});
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

    void store(const fs::path& path, const std::string& filter) override
    {
        const auto* const format = std::ranges::find(formats, filter, &FormatRow::name);
        if (format == std::end(formats)) throw std::runtime_error("no format " + filter);
        file_.call(L"SaveAs", {ComValue(path), format->number});
    }

    void calculate_all() override { application_->object().call(L"CalculateFull"); }

    // Some printers ask for the name of a file, in a window that nobody sees.
    Printing print(const std::string& /*printer*/) override
    {
        patience_->begin(Patience::Time(0),
                         U"默认打印机可能在等待文件名（例如 Microsoft Print to PDF），请换一台打印机。");
        print_out();
        return Printing::Done;
    }

protected:
    virtual void print_out() const = 0;
    const ComObject& file() const noexcept { return file_; }

private:
    std::shared_ptr<Application> application_;
    std::shared_ptr<Patience> patience_;
    ComObject file_;
};

class HeldWorkbook final : public HeldFile {
    using HeldFile::HeldFile;
    void print_out() const override { file().object(L"Worksheets").object(L"Item", {1}).call(L"PrintOut"); }
};

class HeldDocument final : public HeldFile {
    using HeldFile::HeldFile;
    // In the background it would be cut off when the document is closed.
    void print_out() const override { file().call(L"PrintOut", {false}); }
};

} // namespace

// A file that others may not change asks for a password, unless it is only read. None of it gets among the recent
// files.
std::unique_ptr<OpenFile> open_workbook(std::shared_ptr<Application> application, std::shared_ptr<Patience> patience,
                                        const fs::path& path)
{
    constexpr int no_links = 0;
    const auto missing = ComValue::missing();
    auto file = application->files().object(L"Open", {ComValue(path), no_links, true, missing, U"", U"", true, missing,
                                                      missing, false, false, missing, false});
    return std::make_unique<HeldWorkbook>(std::move(application), std::move(patience), std::move(file));
}

std::unique_ptr<OpenFile> open_document(std::shared_ptr<Application> application, std::shared_ptr<Patience> patience,
                                        const fs::path& path)
{
    auto file = application->files().object(L"Open", {ComValue(path), false, true, false, U"", U"", false, U"", U""});
    try {
        application->look_at_window(file.object(L"ActiveWindow"));
    } catch (const Refusal&) { // NOLINT(bugprone-empty-catch): then its process stays unknown
    }
    return std::make_unique<HeldDocument>(std::move(application), std::move(patience), std::move(file));
}

} // namespace tarvik::windows

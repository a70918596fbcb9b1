#pragma once

#include "engines/suite/application.h"

#include <array>

namespace tarvik::windows {

/// A format: the name that the engine calls it by, the suite's number and the extension without which the suite
/// supplies one itself.
struct FormatRow {
    const char* name;
    int number;
    const wchar_t* extension;
};

/// What is the same for a workbook and a document; `Kind` is OpenWorkbook or OpenDocument.
template <typename Kind>
class HeldFile : public Kind {
public:
    HeldFile(std::shared_ptr<Application> application, ComObject file, std::span<const FormatRow> formats,
             const wchar_t* format_member, std::vector<ComValue> more_of_saving = {})
        : application_(std::move(application)), file_(std::move(file)), formats_(formats),
          more_of_saving_(std::move(more_of_saving))
    {
        const int number = file_->get(format_member).as_count();
        for (const auto& row : formats_)
            if (row.number == number || filter_.empty()) filter_ = row.name; // the first is that of strangers
    }
    HeldFile(const HeldFile&) = delete;
    HeldFile& operator=(const HeldFile&) = delete;
    ~HeldFile() override
    {
        try {
            file_->call(L"Close", {false});
        } catch (const std::runtime_error&) { // NOLINT(bugprone-empty-catch): it goes with its process then
        }
        file_.reset();
    }

    const std::string& filter() const override { return filter_; }
    void set_visible(bool visible) override { application_->object().put(L"Visible", visible); }

    // The suite keeps the file open that it wrote, and gives a name without an extension one of its own.
    void store(const std::filesystem::path& path, const std::string& filter) override
    {
        const FormatRow* format = &formats_.front();
        for (const auto& row : formats_)
            if (filter == row.name) format = &row;
        auto kept = path;
        kept += std::to_wstring(++stored_) + format->extension;
        std::vector<ComValue> arguments{ComValue(kept), format->number};
        arguments.insert(arguments.end(), more_of_saving_.begin(), more_of_saving_.end());
        file_->call(L"SaveAs", std::move(arguments));
        std::filesystem::remove(path); // the library's own overwriting does not work there
        std::filesystem::copy_file(kept, path);
    }

protected:
    const ComObject& file() const noexcept { return *file_; }

private:
    std::shared_ptr<Application> application_;
    std::optional<ComObject> file_;
    std::span<const FormatRow> formats_;
    std::vector<ComValue> more_of_saving_; ///< the arguments behind the format
    std::string filter_;
    int stored_ = 0;
};

extern const ApplicationKind workbooks;
extern const ApplicationKind documents;
std::unique_ptr<libreoffice::OpenWorkbook> open_workbook(std::shared_ptr<Application> application,
                                                         const std::filesystem::path& path);
std::unique_ptr<libreoffice::OpenDocument> open_document(std::shared_ptr<Application> application,
                                                         const std::filesystem::path& path);

} // namespace tarvik::windows

#pragma once

#include "engines/automation.h"

#include <functional>
#include <utility>
#include <vector>

namespace tarvik {

template <typename File>
using FileOpener = std::function<std::unique_ptr<File>(TextView path)>;

/// How an engine opens its files. Throws Failure that names the file.
struct FileOpeners {
    FileOpener<Workbook> workbook;
    FileOpener<TextDocument> document;
};

/// Engines whose applications have no window to show: an application keeps the files that it was to open.
class HiddenEngines final : public OfficeEngines {
public:
    explicit HiddenEngines(FileOpeners openers) : openers_(std::move(openers)) {}

    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override
    {
        return std::make_unique<Application<SpreadsheetApplication, Workbook>>(openers_.workbook);
    }
    std::unique_ptr<DocumentApplication> create_document() override
    {
        return std::make_unique<Application<DocumentApplication, TextDocument>>(openers_.document);
    }

private:
    template <typename Kind, typename File>
    class Application final : public Kind {
    public:
        explicit Application(FileOpener<File> opener) : opener_(std::move(opener)) {}

        File& open(TextView path) override { return *opened_.emplace_back(opener_(path)); }
        void quit() override { opened_.clear(); }

    private:
        FileOpener<File> opener_;
        std::vector<std::unique_ptr<File>> opened_;
    };

    FileOpeners openers_;
};

} // namespace tarvik

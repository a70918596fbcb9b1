#include "engines/documents/engine.h"
#include "engines/libreoffice/libreoffice.h"
#include "engines/packages/file_kind.h"
#include "engines/spreadsheets/engine.h"
#include "engines/spreadsheets/workbook_model.h"

/// The embedded engines fill files of the older formats, too: the installed suite converts what they read and write.
namespace tarvik::libreoffice {

namespace {

/// The suite refuses a file whose name does not say what is in it.
struct Extensions {
    const char *older, *package, *with_macros;

    const char* of_package(std::string_view bytes) const { return has_macros(bytes) ? with_macros : package; }
};
constexpr Extensions of_workbooks{".xls", ".xlsx", ".xlsm"}, of_documents{".doc", ".docx", ".docm"};

/// What a file holds as a package, converted once as long as it does not change.
std::shared_ptr<const ooxml::Package> package_of(const Surroundings& around, TextView path, FileKind kind,
                                                 const Extensions& extensions)
{
    return around.packages->open(path, [&] {
        auto bytes = around.files.read(path);
        if (require_kind(bytes, kind) != kind) return bytes;
        return converted(around.office, bytes, {extensions.older, extensions.of_package(bytes)});
    });
}

class ConvertedWorkbook final : public ooxml::ForeignWorkbook {
public:
    explicit ConvertedWorkbook(LibreOffice& suite) : suite_(suite) {}

    void take(int /*position*/) override {}
    std::string stored(ooxml::WorkbookModel& model, std::u32string_view extension) override
    {
        const auto& package = model.pack();
        if (extension != U".xls") return package;
        return converted(suite_, package, {of_workbooks.of_package(package), of_workbooks.older});
    }

private:
    LibreOffice& suite_;
};

class ConvertedDocument final : public ooxml::DocumentModel {
public:
    ConvertedDocument(std::shared_ptr<const ooxml::Package> package, LibreOffice& suite)
        : DocumentModel(std::move(package)), suite_(suite)
    {
    }

    std::string pack() override
    {
        const auto package = DocumentModel::pack();
        return converted(suite_, package, {of_documents.of_package(package), of_documents.older});
    }

private:
    LibreOffice& suite_;
};

} // namespace

std::unique_ptr<Workbook> open_workbook(const Surroundings& around, Text path)
{
    auto package =
        ooxml::naming_workbook(path, [&] { return package_of(around, path, FileKind::Workbook, of_workbooks); });
    return ooxml::open_workbook(around.files, around.printer, std::move(path), std::move(package), around.services,
                                std::make_unique<ConvertedWorkbook>(around.office), U".xls");
}

std::unique_ptr<TextDocument> open_document(const Surroundings& around, TextView path)
{
    return ooxml::open_document(around.files, around.printer, path, [&] {
        return std::make_unique<ConvertedDocument>(package_of(around, path, FileKind::Document, of_documents),
                                                   around.office);
    });
}

} // namespace tarvik::libreoffice

namespace tarvik {

bool suite_edits() noexcept
{
    return false;
}

} // namespace tarvik

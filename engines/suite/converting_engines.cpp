#include "engines/documents/engine.h"
#include "engines/libreoffice/engine.h"
#include "engines/libreoffice/exchange_folder.h"
#include "engines/packages/damage.h"
#include "engines/packages/file_kind.h"
#include "engines/spreadsheets/engine.h"
#include "platform/files/watched_files.h"

/// The embedded engines fill older formats, too: the installed suite converts what they read and write.
namespace tarvik {

namespace {

/// The suite refuses a file whose name does not say what is in it.
const char* extension_of_package(FileKind kind, std::string_view bytes)
{
    if (kind == FileKind::Workbook) return has_macros(bytes) ? ".xlsm" : ".xlsx";
    return has_macros(bytes) ? ".docm" : ".docx";
}

/// The files behind it, with workbooks or documents of the older formats as packages: they are converted when they are
/// read, and what is written in their place back again. Everything else passes as it is. What the suite cannot do is a
/// Failure that names the file.
class ConvertedFiles final : public WatchedFiles {
public:
    /// `kind` is Workbook, which is written as its name's extension says, or Document, which is always written in the
    /// older format: it was opened in it.
    ConvertedFiles(Files& files, libreoffice::LibreOffice& suite, FileKind kind)
        : WatchedFiles(files), suite_(suite), kind_(kind)
    {
    }

    std::string read(TextView path) const override
    {
        auto bytes = files_.read(path);
        const auto found = file_kind(bytes);
        if (found != FileKind::Workbook && found != FileKind::Document) return bytes;
        return naming(path, [&] {
            require_kind(bytes, kind_);
            return converted(bytes, older(), extension_of_package(kind_, bytes));
        });
    }

    void replace(TextView path, std::string_view bytes) override
    {
        const bool is_newer = kind_ == FileKind::Workbook && !lower(path.str()).ends_with(U".xls");
        if (is_newer) return files_.replace(path, bytes);
        const auto stored = naming(path, [&] { return converted(bytes, extension_of_package(kind_, bytes), older()); });
        files_.replace(path, stored);
    }

    bool stores_xls() const override { return true; }

private:
    const char* older() const noexcept { return kind_ == FileKind::Workbook ? ".xls" : ".doc"; }

    template <typename Convert>
    std::string naming(TextView path, const Convert& convert) const
    {
        return ooxml::naming_file(kind_ == FileKind::Workbook ? U"工作簿" : U"文档", path, convert);
    }

    std::string converted(std::string_view bytes, const char* from, const char* to) const
    {
        const libreoffice::ExchangeFolder folder(suite_.folder());
        const std::string written = std::string("written") + to;
        auto file = suite_.open(folder.put(std::string("read") + from, bytes));
        if (!file) throw ooxml::Damage(libreoffice::suite_title() + U" 不能打开它。");
        file.call([&](libreoffice::OpenFile& opened) { opened.store(folder.place(written), {}); });
        file.close(); // the suite holds open what it wrote
        return folder.take(written);
    }

    libreoffice::LibreOffice& suite_;
    FileKind kind_;
};

class ConvertingEngines final : public OfficeEngines {
public:
    ConvertingEngines(libreoffice::LibreOffice& suite, Files& files, Printer& printer, const FormulaServices& services)
        : workbooks_(files, suite, FileKind::Workbook), documents_(files, suite, FileKind::Document),
          workbook_engine_(workbooks_, printer, services), document_engine_(documents_, printer)
    {
    }

    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override { return workbook_engine_.create(); }
    std::unique_ptr<DocumentApplication> create_document() override { return document_engine_.create(); }

private:
    ConvertedFiles workbooks_, documents_;
    OoxmlSpreadsheets workbook_engine_;
    OoxmlDocuments document_engine_;
};

} // namespace

bool suite_edits() noexcept
{
    return false;
}

std::unique_ptr<OfficeEngines> engines_of_older_formats(libreoffice::LibreOffice& office, Files& files,
                                                        Printer& printer, const FormulaServices& services)
{
    return std::make_unique<ConvertingEngines>(office, files, printer, services);
}

} // namespace tarvik

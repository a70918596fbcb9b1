#include "runs/engines.h"

#include "engines/documents/engine.h"
#include "engines/libreoffice/engine.h"
#include "engines/packages/file_kind.h"
#include "engines/spreadsheets/engine.h"

#include <array>
#include <fstream>

namespace tarvik {

namespace {

class EmbeddedEngines final : public OfficeEngines {
public:
    EmbeddedEngines(Files& files, Printer& printer, FormulaServices services)
        : spreadsheets_(files, printer, std::move(services)), documents_(files, printer)
    {
    }

    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override { return spreadsheets_.create(); }
    std::unique_ptr<DocumentApplication> create_document() override { return documents_.create(); }

private:
    OoxmlSpreadsheets spreadsheets_;
    OoxmlDocuments documents_;
};

// Of a package the beginning alone is read: it says it all, and a run opens thousands. A file that cannot be read is
// none of the older formats; who opens it reports why. One behind a password may be open to whoever knows the usual
// one.
bool is_of_older_format(Files& files, TextView path)
{
    if (!files.file_exists(path)) return false; // a pipe would hold the program up
    std::array<char, 8> beginning{};
    std::ifstream stream(files.resolve(path), std::ios::binary);
    stream.read(beginning.data(), beginning.size());
    const auto begun = file_kind({beginning.data(), static_cast<std::size_t>(stream.gcount())});
    if (begun == FileKind::Package || begun == FileKind::Other || begun == FileKind::Empty) return false;
    const auto kind = file_kind(files.read(path));
    return kind == FileKind::Workbook || kind == FileKind::Document || kind == FileKind::Encrypted;
}

class EnginesByContent final : public OfficeEngines {
public:
    EnginesByContent(Files& files, std::unique_ptr<OfficeEngines> embedded, std::unique_ptr<OfficeEngines> suite)
        : files_(files), embedded_(std::move(embedded)), suite_(std::move(suite))
    {
    }

    OfficeEngines& engines_for(TextView path) { return is_of_older_format(files_, path) ? *suite_ : *embedded_; }
    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override;
    std::unique_ptr<DocumentApplication> create_document() override;

private:
    Files& files_;
    std::unique_ptr<OfficeEngines> embedded_, suite_;
};

// An application that opens each file with one of the engines' own.
template <typename Application, typename File, std::unique_ptr<Application> (OfficeEngines::*create)()>
class ApplicationByContent final : public Application {
public:
    explicit ApplicationByContent(EnginesByContent& engines) : engines_(engines) {}

    File& open(TextView path) override
    {
        return applications_.emplace_back((engines_.engines_for(path).*create)())->open(path);
    }

    void quit() override
    {
        for (const auto& application : applications_) application->quit();
    }

private:
    EnginesByContent& engines_;
    std::vector<std::unique_ptr<Application>> applications_;
};

std::unique_ptr<SpreadsheetApplication> EnginesByContent::create_spreadsheet()
{
    using Spreadsheets = ApplicationByContent<SpreadsheetApplication, Workbook, &OfficeEngines::create_spreadsheet>;
    return std::make_unique<Spreadsheets>(*this);
}

std::unique_ptr<DocumentApplication> EnginesByContent::create_document()
{
    using Documents = ApplicationByContent<DocumentApplication, TextDocument, &OfficeEngines::create_document>;
    return std::make_unique<Documents>(*this);
}

} // namespace

std::optional<Engine> engine_named(std::string_view name)
{
    if (name == "auto") return Engine::Auto;
    if (name == "ooxml") return Engine::Ooxml;
    if (name == "libreoffice" && suite_edits()) return Engine::LibreOffice;
    return std::nullopt;
}

std::unique_ptr<OfficeEngines> make_engines(Engine engine, Files& files, Printer& printer,
                                            libreoffice::LibreOffice& suite, std::function<CalendarTime()> now)
{
    FormulaServices services{std::move(now)};
    if (engine != Engine::Ooxml) {
        services.recalculate = [&suite](std::string_view package) { return libreoffice::recalculated(suite, package); };
    }
    auto embedded = std::make_unique<EmbeddedEngines>(files, printer, services);
    if (engine == Engine::Ooxml) return embedded;
    auto by_suite = std::make_unique<LibreOfficeEngines>(suite, files, printer, services);
    if (engine == Engine::LibreOffice) return by_suite;
    return engines_by_content(files, std::move(embedded), std::move(by_suite));
}

std::unique_ptr<OfficeEngines> engines_by_content(Files& files, std::unique_ptr<OfficeEngines> embedded,
                                                  std::unique_ptr<OfficeEngines> suite)
{
    return std::make_unique<EnginesByContent>(files, std::move(embedded), std::move(suite));
}

} // namespace tarvik

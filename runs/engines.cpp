#include "runs/engines.h"

#include "engines/documents/engine.h"
#include "engines/libreoffice/libreoffice.h"
#include "engines/packages/file_kind.h"
#include "engines/spreadsheets/engine.h"

#include <array>
#include <fstream>

namespace tarvik {

// Of a package the beginning alone is read: it says it all, and a run opens thousands. A file that cannot be read needs
// none; who opens it reports why. One behind a password may be open to whoever knows the usual one.
bool needs_suite(Files& files, TextView path)
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
    FileOpeners embedded{ooxml_workbooks(files, printer, services), ooxml_documents(files, printer)};
    if (engine == Engine::Ooxml) return std::make_unique<HiddenEngines>(std::move(embedded));
    FileOpeners by_suite = libreoffice_files(suite, files, printer, std::move(services));
    if (engine == Engine::LibreOffice) return std::make_unique<HiddenEngines>(std::move(by_suite));
    const auto by_content = [&files]<typename File>(const FileOpener<File>& embedded_one,
                                                    const FileOpener<File>& suite_one) -> FileOpener<File> {
        return [&files, embedded_one, suite_one](TextView path) {
            return needs_suite(files, path) ? suite_one(path) : embedded_one(path);
        };
    };
    return std::make_unique<HiddenEngines>(FileOpeners{by_content(embedded.workbook, by_suite.workbook),
                                                       by_content(embedded.document, by_suite.document)});
}

} // namespace tarvik

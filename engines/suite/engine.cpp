#include "engines/libreoffice/engine.h"

#include "engines/documents/engine.h"
#include "engines/spreadsheets/engine.h"
#include "engines/suite/converted_files.h"

namespace tarvik {

namespace {

/// The embedded engines with files that the suite converts.
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
    windows::ConvertedFiles workbooks_, documents_;
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

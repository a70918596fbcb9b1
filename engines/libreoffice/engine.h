#pragma once

#include "engines/automation.h"
#include "engines/libreoffice/libreoffice.h"
#include "engines/spreadsheets/formula_services.h"
#include "platform/platform.h"

namespace tarvik {

/// The engine that has LibreOffice do the work: workbooks in .xls, .xlsx and .xlsm, binary documents and packages.
/// LibreOffice works on copies of its own; the files are read and replaced as a whole. `office`, `files` and `printer`
/// must outlive the engines.
class LibreOfficeEngines final : public OfficeEngines {
public:
    LibreOfficeEngines(libreoffice::LibreOffice& office, Files& files, Printer& printer)
        : office_(office), files_(files), printer_(printer)
    {
    }

    std::unique_ptr<SpreadsheetApplication> create_spreadsheet() override;
    std::unique_ptr<DocumentApplication> create_document() override;

private:
    libreoffice::LibreOffice& office_;
    Files& files_;
    Printer& printer_;
};

/// Whether the suite of this system edits files in place. One that does not converts them, calculates and prints.
bool suite_edits() noexcept;

/// The engines for workbooks and documents of the older formats: the suite's own, or, with one that only converts, the
/// embedded ones with files that it has converted, which take `services`.
std::unique_ptr<OfficeEngines> engines_of_older_formats(libreoffice::LibreOffice& office, Files& files,
                                                        Printer& printer, const FormulaServices& services);

namespace libreoffice {

/// A workbook package (.xlsx, .xlsm) with every formula calculated anew, as LibreOffice stores it as .xlsx: each
/// formula cell holds its result. Throws Damage.
std::string recalculated(LibreOffice& office, std::string_view package);

} // namespace libreoffice

} // namespace tarvik

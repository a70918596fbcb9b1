#pragma once

#include "engines/hidden_engines.h"
#include "engines/libreoffice/libreoffice.h"
#include "engines/packages/package.h"
#include "engines/spreadsheets/engine.h"
#include "platform/platform.h"

namespace tarvik {

namespace libreoffice {

/// What a file is opened with; all that is referred to outlives the file.
struct Surroundings {
    LibreOffice& office;
    Files& files;
    Printer& printer;
    FormulaServices services;
    std::shared_ptr<ooxml::PackageCache> packages; ///< what the files opened last hold as packages
};

// Files that the suite reads and writes. Failures name the file, or the picture's where that is at fault.

std::unique_ptr<Workbook> open_workbook(const Surroundings& around, Text path);
std::unique_ptr<TextDocument> open_document(const Surroundings& around, TextView path);

/// Extensions that say what is read and what is written, and how LibreOffice calls that.
struct Conversion {
    std::string from, to, filter{};
    bool calculates = false; ///< every formula of a workbook
};
/// What the suite writes of a file that it reads. Throws Damage.
std::string converted(LibreOffice& office, std::string_view bytes, const Conversion& conversion);
/// A workbook package (.xlsx, .xlsm) with every formula calculated anew, as LibreOffice stores it as .xlsx: each
/// formula cell holds its result. Throws Damage.
std::string recalculated(LibreOffice& office, std::string_view package);

} // namespace libreoffice

/// The engine that has the suite of this system read and write files: workbooks in .xls, .xlsx and .xlsm, binary
/// documents and packages. The suite works on copies of its own; the files are read and replaced as a whole. `office`,
/// `files` and `printer` must outlive it and what it opens.
FileOpeners libreoffice_files(libreoffice::LibreOffice& office, Files& files, Printer& printer,
                              FormulaServices services = {});

/// Whether the suite of this system edits files in place. One that does not converts them, calculates and prints.
bool suite_edits() noexcept;

} // namespace tarvik

#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "engines/packages/package_cache.h"
#include "engines/spreadsheets/formula_services.h"
#include "platform/platform.h"

namespace tarvik::libreoffice {

/// What a file is opened with; all of it outlives the file but for `packages`, what the files opened last hold as
/// packages.
struct Surroundings {
    LibreOffice& office;
    Files& files;
    Printer& printer;
    ooxml::PackageCache& packages;
    const FormulaServices& services;
};

// Files that the suite reads and writes. Failures name the file, or the picture's where that is at fault.

std::unique_ptr<Workbook> open_workbook(const Surroundings& around, Text path);
std::unique_ptr<TextDocument> open_document(const Surroundings& around, Text path);

} // namespace tarvik::libreoffice

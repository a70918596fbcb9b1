#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "platform/platform.h"

namespace tarvik::libreoffice {

// Files that LibreOffice holds open. Failures name the file, or the picture's where that is at fault.

std::unique_ptr<Workbook> open_workbook(LibreOffice& office, Files& files, Printer& printer, Text path);
std::unique_ptr<TextDocument> open_document(LibreOffice& office, Files& files, Printer& printer, Text path);

} // namespace tarvik::libreoffice

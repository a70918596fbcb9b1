#pragma once

#include "engines/automation.h"
#include "engines/libreoffice/libreoffice.h"
#include "engines/spreadsheets/engine.h"
#include "platform/platform.h"

#include <memory>
#include <optional>
#include <string_view>

namespace tarvik {

enum class Engine {
    Auto,       ///< what a file holds decides when it is opened
    Ooxml,      ///< the embedded engine alone: .xlsx, .xlsm and documents that are packages like them
    LibreOffice ///< LibreOffice for every file; not on Windows, where the suite edits nothing
};

/// By the name that an option gives it: auto, ooxml, libreoffice. Nothing for one that this system does not have.
std::optional<Engine> engine_named(std::string_view name);

/// The engines of the program. `suite` is started when a file first needs it; where it is missing, opening such a file
/// is a failure that says what to install. `now` is what formulas take for the present. `files`, `printer` and `suite`
/// must outlive the engines.
std::unique_ptr<OfficeEngines> make_engines(Engine engine, Files& files, Printer& printer,
                                            libreoffice::LibreOffice& suite,
                                            std::function<CalendarTime()> now = FormulaServices().now);

/// Whether the file is of the older formats, which the embedded engine cannot open. What is neither goes to that, whose
/// failure says what is wrong with it.
bool needs_suite(Files& files, TextView path);

} // namespace tarvik

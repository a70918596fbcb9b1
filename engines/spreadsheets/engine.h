#pragma once

#include "engines/hidden_engines.h"
#include "platform/platform.h"

namespace tarvik {

/// What the formulas of workbooks need from outside.
struct FormulaServices {
    std::function<CalendarTime()> now = [] { return SystemClock().now(); };
    /// A workbook package with every formula calculated by the suite at hand; throws Damage. None without one.
    std::function<std::string(std::string_view package)> recalculate{};
};

namespace ooxml {

class Package;
class WorkbookModel;

/// A file that a suite reads and writes, where a workbook's package only shows what the file holds. Both functions
/// throw Damage.
class ForeignWorkbook {
public:
    virtual ~ForeignWorkbook() = default;
    /// To be called before somebody gets the sheet, which he may change; `position` is its among all of the workbook.
    virtual void take(int position) = 0;
    /// The bytes of the file with what was changed, in the format of the extension (".xls", ".xlsx", ".xlsm").
    virtual std::string stored(WorkbookModel& model, std::u32string_view extension) = 0;
};

/// The extension of a path that names a workbook's format: .xlsx, .xlsm or .xls; else empty.
std::u32string_view workbook_extension(TextView path);

/// A workbook opened from a file. Failures name the file. `foreign` is null where the file is the package. `extension`
/// is the one of the format that the file has; empty where that is the package's.
std::unique_ptr<Workbook> open_workbook(Files& files, Printer& printer, Text path,
                                        std::shared_ptr<const Package> package, FormulaServices services,
                                        std::unique_ptr<ForeignWorkbook> foreign = nullptr,
                                        std::u32string_view extension = {});

} // namespace ooxml

/// The embedded engine for workbooks in .xlsx and .xlsm files. Everything in a workbook that no operation names stays
/// byte for byte; files are read and replaced as a whole. `files` and `printer` must outlive it and what it opens.
FileOpener<Workbook> ooxml_workbooks(Files& files, Printer& printer, FormulaServices services = {});

} // namespace tarvik

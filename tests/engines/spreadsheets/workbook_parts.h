#pragma once

#include "tests/support/packages.h"

/// Workbooks that the tests make themselves.
namespace tarvik::test {

/// Two worksheets, styles and shared texts. `sheet_data` is what stands in the first sheet's <sheetData>, `behind` what
/// follows it.
Parts simple_parts(const std::string& sheet_data, const std::string& behind = {});
/// A workbook with macros, a chart sheet, a hidden sheet, drawings and all else that must come through unharmed.
Parts rich_parts();

} // namespace tarvik::test

#pragma once

#include "engines/libreoffice/plugin/held_file.h"

#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/table/CellRangeAddress.hpp>

namespace tarvik::libreoffice {

using Sheet = css::uno::Reference<css::sheet::XSpreadsheet>;

Area to_area(const css::table::CellRangeAddress& address);
css::uno::Reference<css::table::XCellRange> range_of(const Sheet& sheet, const Area& area);
/// The cells that hold something of this kind, of the flags of CellFlags.
std::vector<Area> areas_with(const Sheet& sheet, sal_Int32 what);
/// All that the sheet holds, in few calls.
SheetContent read_sheet(const Sheet& sheet);

} // namespace tarvik::libreoffice

#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "engines/libreoffice/rectangles.h"

#include <map>
#include <set>

namespace tarvik::libreoffice {

/// The cells of one sheet: read as a whole when first asked for, written as few blocks when the workbook is saved. They
/// follow the promises of Worksheet. What goes wrong is Damage.
class SheetCells {
public:
    SheetCells(Handle<OpenWorkbook>& file, int sheet) : file_(file), sheet_(sheet) {}

    Text text(Place place);
    CellValue value(Place place);
    bool is_empty(Place place);
    void write(Place place, const CellValue& value);
    int clear(const Area& area);

    /// Sends what was written; gives whether that was anything.
    bool send();
    /// Whether everything lies within the first rows and columns.
    bool fits(int rows, int columns);

private:
    struct Write {
        Place place;
        CellValue value;
    };

    const SheetContent& content();
    const HeldCell* held(Place place);
    bool holds_nothing(Place place);
    void settle();
    void find_first_cells(const Area& area);
    Place first_cell(Place place) const;
    void put(Place place, CellValue value);

    Handle<OpenWorkbook>& file_;
    int sheet_;
    std::optional<SheetContent> content_;
    std::vector<Write> unsettled_;       ///< as they came; the merged ranges are still to be looked at
    std::map<Place, Place> first_cells_; ///< of the merged ranges, of the places looked at
    std::map<Place, CellValue> written_; ///< stands above the content
    std::set<Place> unsent_;
};

} // namespace tarvik::libreoffice

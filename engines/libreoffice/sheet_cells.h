#pragma once

#include "engines/libreoffice/libreoffice.h"
#include "engines/spreadsheets/merged_texts.h"

#include <functional>
#include <map>
#include <set>

namespace tarvik::libreoffice {

/// What the sheets of a workbook share: formulas of one depend on what is written into another.
struct SheetWrites {
    std::function<void()> send; ///< sends what was written into all of them
    int count = 0, sent = 0;    ///< of all writes
};

/// The cells of one sheet: read as a whole when first asked for, written as few blocks when the workbook is saved. They
/// follow the promises of Worksheet. What goes wrong is Damage.
class SheetCells {
public:
    SheetCells(Handle<OpenWorkbook>& file, int sheet, SheetWrites& writes) : file_(file), sheet_(sheet), writes_(writes)
    {
    }

    Text text(Place place);
    CellValue value(Place place);
    bool is_empty(Place place);
    bool is_date(Place place);
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
    CellValue raw_value(Place place);
    ShownAs shown_as(Place place);
    bool holds_nothing(Place place);
    void settle();
    void read_formulas_anew(const Area& area);
    void find_merged(const Area& area);
    void find_numeric_parts();
    void write_to_merged(const Area& merged, Place place, const CellValue& value);
    void put(Place place, CellValue value);
    void erase(const std::set<Place>& places);

    Handle<OpenWorkbook>& file_;
    int sheet_;
    SheetWrites& writes_;
    int writes_read_ = 0; ///< the content holds the formulas' results as of then
    std::optional<SheetContent> content_;
    std::vector<Write> unsettled_; ///< as they came; the merged ranges are still to be looked at
    std::map<Place, Area> merged_; ///< the merged ranges, or the cells themselves, of the places looked at
    ooxml::MergedTexts merged_texts_;
    std::vector<Area> split_;            ///< and not sent yet
    std::map<Place, bool> is_numeric_;   ///< of the places looked at: whether what reads as a number is stored as one
    std::map<Place, CellValue> written_; ///< stands above the content
    std::set<Place> unsent_;
};

} // namespace tarvik::libreoffice

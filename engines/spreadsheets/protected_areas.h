#pragma once

#include "engines/packages/package.h"
#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/range_set.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tarvik::ooxml {

/// Cells of a worksheet whose texts other parts repeat.
struct ProtectedAreas {
    /// The header rows of tables. A table's part names its columns by these texts, and formulas everywhere refer to
    /// them, so a spreadsheet application calls the file damaged when they differ.
    RangeSet headers;
    /// What pivot tables fill; a spreadsheet application fills it anew from their own records.
    RangeSet pivots;
};

/// Finds them for the sheets of a workbook. However many relationships lead to a part, it is read once.
class AreaReader {
public:
    explicit AreaReader(const Package& package) : package_(package) {}
    ProtectedAreas areas_of(std::string_view sheet_name);

private:
    struct Areas {
        std::vector<Range> headers, pivots;
    };
    static Areas areas_in(const XmlPart& part, bool is_table);

    const Package& package_;
    std::map<std::string, Areas> known_; // by the part's key
};

} // namespace tarvik::ooxml

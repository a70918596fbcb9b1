#pragma once

#include "platform/text/text.h"

#include <cstdint>
#include <optional>
#include <vector>

/// How a worksheet looks: what a preview draws. It is read once and has no part in the work on cells.
namespace tarvik {

/// Red x 65536 + green x 256 + blue.
using SheetColour = std::uint32_t;

struct BorderLook {
    int width = 0; ///< 0 none, 1 thin, 2 medium, 3 thick
    SheetColour colour = 0;
};

enum class AlignmentLook { General, Left, Centre, Right };

struct CellLook {
    std::optional<SheetColour> fill;
    SheetColour colour = 0; ///< of the text
    Text font = U"宋体";
    double points = 11;
    bool bold = false, italic = false, wraps = false;
    AlignmentLook alignment = AlignmentLook::General;
    BorderLook left, top, right, bottom;
};

/// A cell or a merged range, from its first cell on. Rows and columns count from 1.
struct PicturedCell {
    int row = 1, column = 1;
    int rows = 1, columns = 1; ///< that it takes
    CellLook look;
    Text text = {};
};

/// The upper left part of a sheet: `widths` of columns and `heights` of rows in points, and its cells row by row.
/// Ranges that reach beyond it are cut off.
struct SheetPicture {
    std::vector<double> widths, heights;
    std::vector<PicturedCell> cells;
};

/// What a Worksheet may offer beside its operations.
class PicturedSheet {
public:
    virtual ~PicturedSheet() = default;
    /// The look of all rows and columns that are used or formatted, of at least `rows` and `columns`, but never more
    /// than a picture holds; without the texts. Throws Failure.
    virtual SheetPicture picture(int rows, int columns) const = 0;

    static constexpr int most_rows = 200, most_columns = 60;
};

} // namespace tarvik

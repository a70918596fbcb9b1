#include "engines/spreadsheets/sheet_look.h"

#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/calculation/places.h"
#include "engines/spreadsheets/cell_styles.h"

#include <algorithm>
#include <map>

namespace tarvik::ooxml {

namespace {

constexpr double usual_row_height = 15, usual_column_width = 8.43; // points; characters
constexpr double pixels_a_character = 7, pixels_around = 5, points_a_pixel = 0.75;
constexpr double most_points = 600; // a row or column is never drawn larger

double width_in_points(double characters)
{
    return std::clamp((characters * pixels_a_character + pixels_around) * points_a_pixel, 0.0, most_points);
}

class Reader {
public:
    Reader(pugi::xml_node worksheet, const Package& package) : worksheet_(worksheet), styles_(package)
    {
        for (const auto row : child_named(worksheet_, "sheetData").children())
            for (const auto cell : row.children())
                if (const auto place = parse_place(cell.attribute("r").value())) take(*place, cell);
        for (const auto merge : child_named(worksheet_, "mergeCells").children())
            if (const auto range = parse_range(merge.attribute("ref").value())) take(*range);
    }

    SheetPicture picture(int rows, int columns)
    {
        size_ = {std::clamp(std::max(rows, used_.row), 1, PicturedSheet::most_rows),
                 std::clamp(std::max(columns, used_.column), 1, PicturedSheet::most_columns)};
        SheetPicture picture{column_widths(), row_heights(), {}};
        for (const auto& [place, look] : looks_)
            if (is_inside(place) && !is_covered(place)) picture.cells.push_back(cell(place, *look));
        return picture;
    }

private:
    void take(Place place, pugi::xml_node cell)
    {
        looks_[place] = &styles_.look(cell.attribute("s").as_uint());
        use(place);
    }
    void take(const Range& range)
    {
        // Of ranges that begin outside of what can be shown nothing is seen.
        if (range.first.row > PicturedSheet::most_rows || range.first.column > PicturedSheet::most_columns) return;
        merged_[range.first] = range;
        looks_.try_emplace(range.first, &styles_.look(0));
        use(range.last);
    }
    void use(Place place)
    {
        if (place.row > PicturedSheet::most_rows || place.column > PicturedSheet::most_columns) return;
        used_ = {std::max(used_.row, place.row), std::max(used_.column, place.column)};
    }

    bool is_inside(Place place) const { return place.row <= size_.row && place.column <= size_.column; }
    bool is_covered(Place place) const
    {
        return std::ranges::any_of(
            merged_, [place](const auto& merge) { return merge.second.contains(place) && merge.first != place; });
    }

    PicturedCell cell(Place place, const CellLook& look) const
    {
        PicturedCell result{.row = place.row, .column = place.column, .look = look};
        const auto merge = merged_.find(place);
        if (merge == merged_.end()) return result;
        // The far sides of a range are its far cells' affair.
        const Place last = merge->second.last;
        result.rows = std::min(last.row, size_.row) - place.row + 1;
        result.columns = std::min(last.column, size_.column) - place.column + 1;
        if (const auto corner = looks_.find(last); corner != looks_.end()) {
            result.look.right = corner->second->right;
            result.look.bottom = corner->second->bottom;
        }
        return result;
    }

    std::vector<double> column_widths() const
    {
        const auto format = child_named(worksheet_, "sheetFormatPr");
        const double usual = format.attribute("defaultColWidth").as_double(usual_column_width);
        std::vector<double> widths(static_cast<std::size_t>(size_.column), width_in_points(usual));
        for (const auto column : child_named(worksheet_, "cols").children()) {
            const double width =
                column.attribute("hidden").as_bool() ? 0 : width_in_points(column.attribute("width").as_double(usual));
            const int last = std::min(column.attribute("max").as_int(), size_.column);
            for (int i = std::max(1, column.attribute("min").as_int(1)); i <= last; ++i)
                widths[static_cast<std::size_t>(i - 1)] = width;
        }
        return widths;
    }

    std::vector<double> row_heights() const
    {
        const auto format = child_named(worksheet_, "sheetFormatPr");
        const double usual = format.attribute("defaultRowHeight").as_double(usual_row_height);
        std::vector<double> heights(static_cast<std::size_t>(size_.row), usual);
        for (const auto row : child_named(worksheet_, "sheetData").children()) {
            const int number = row.attribute("r").as_int();
            if (number < 1 || number > size_.row) continue;
            const double height = row.attribute("hidden").as_bool() ? 0 : row.attribute("ht").as_double(usual);
            heights[static_cast<std::size_t>(number - 1)] = std::clamp(height, 0.0, most_points);
        }
        return heights;
    }

    pugi::xml_node worksheet_;
    CellStyles styles_;
    std::map<Place, const CellLook*> looks_;
    std::map<Place, Range> merged_; // by their first cells
    Place used_{1, 1}, size_{1, 1};
};

} // namespace

SheetPicture sheet_look(pugi::xml_node worksheet, const Package& package, int rows, int columns)
{
    return Reader(worksheet, package).picture(rows, columns);
}

} // namespace tarvik::ooxml

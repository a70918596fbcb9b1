#pragma once

#include "engines/packages/package.h"
#include "engines/spreadsheets/calculation/formula.h"
#include "engines/spreadsheets/range_set.h"
#include "engines/spreadsheets/sheet_cells.h"

#include <cstdint>
#include <span>

namespace tarvik::ooxml {

/// A worksheet as the workbook lists it.
struct ListedSheet {
    Text title;
    std::string part;
    int position = 0; ///< among all sheets of the workbook, chart sheets included; from 0
};

/// The sheets, defined names and tables of a workbook. A damaged table is none: a formula that names it cannot be
/// calculated.
calculation::Names read_names(const Package& package, pugi::xml_node workbook, const std::vector<ListedSheet>& sheets);

/// What a cell's number format makes of the cell: dates have a format of their own, for a plain number in such a cell
/// reads as some day.
enum class NumberFormat : char { General, Number, Date, Text };

/// The number formats that the cells of a workbook name by number. What is odd or damaged in the style part is General.
std::vector<NumberFormat> read_number_formats(const Package& package);

/// A formula as a cell's element holds it.
struct FormulaElement {
    enum Kind { Usual, Shared, Array, DataTable };

    explicit FormulaElement(pugi::xml_node cell);

    pugi::xml_node node;
    Kind kind = Usual;
    std::string text;  ///< empty for a cell that shares the formula that another one holds
    std::string group; ///< of those that share one; a later group may use its number again
    bool has_range = false;
    std::optional<Range> filled; ///< by an array formula or a data table

    bool is_master() const noexcept { return kind == Shared && !text.empty() && has_range; }
    bool is_sharing() const noexcept { return kind == Shared && text.empty(); }
    /// From now on the cell has that formula for itself.
    void state(const std::string& formula);
};

/// The formula as it reads when its cell moves by so many rows and columns: relative references move along, absolute
/// ones stay. A reference that leaves the sheet comes back in at the other side.
std::string shifted_formula(std::string_view formula, int rows, int columns);

/// A formula of a workbook, as it was opened.
struct IndexedFormula {
    calculation::FormulaPointer formula; ///< null for a data table
    int sheet = 0;
    Range range; ///< that it fills: its own cell, or that of an array formula or a data table
    bool is_array = false;
    bool is_volatile = false; ///< counts as touched whenever anything is written
    bool has_result = false;

    Place place() const noexcept { return range.first; }
};

/// The formulas of a workbook and the areas that each of them reads. It never changes, and who opens the same package
/// again shares it.
class FormulaIndex {
public:
    using Number = std::uint32_t; ///< of a formula; they go sheet by sheet and column by column
    static constexpr Number none = static_cast<Number>(-1);

    /// `sheets` hold what the package does; one without a formula may be null.
    FormulaIndex(calculation::Names names, std::vector<NumberFormat> formats,
                 std::span<const SheetCells* const> sheets);

    const calculation::Names& names() const noexcept { return names_; }
    /// Of the cells that name the format by that number.
    NumberFormat format(std::size_t number) const
    {
        return number < formats_.size() ? formats_[number] : NumberFormat();
    }
    /// The header rows of a sheet's tables. A table's part names its columns by these texts, and formulas everywhere
    /// refer to them, so that a spreadsheet application calls the file damaged when they differ.
    const RangeSet& headers(int sheet) const { return sheet_at(sheet).headers; }
    std::size_t sheet_count() const noexcept { return sheets_.size(); }
    std::size_t size() const noexcept { return formulas_.size(); }
    const IndexedFormula& operator[](Number number) const { return formulas_[number]; }
    std::span<const Number> volatile_ones() const noexcept { return volatile_; }
    /// The formula that fills the cell, or none.
    Number find(int sheet, Place place) const;
    /// The cells that share the formula that this one states.
    std::span<const Place> sharers(int sheet, Place master) const;
    /// Calls `found` with each that fills cells of the range.
    template <typename Found>
    void visit(int sheet, const Range& range, Found&& found) const
    {
        const auto& at = sheet_at(sheet);
        for (auto one = first_from(sheet, range.first);
             one < at.end && formulas_[one].place().column <= range.last.column;) {
            const auto [row, column] = formulas_[one].place();
            if (row < range.first.row) one = first_from(sheet, {range.first.row, column});
            else if (row > range.last.row) one = first_from(sheet, {range.first.row, column + 1});
            else found(one++);
        }
        at.filled.any_of(range, [&](const Range& filled) {
            if (!range.contains(filled.first)) found(first_from(sheet, filled.first));
            return false;
        });
    }

    /// The areas of a sheet that formulas name, and the formula that names the area of that index.
    const RangeSet& areas(int sheet) const { return sheet_at(sheet).areas; }
    Number reader(int sheet, std::size_t area) const { return sheet_at(sheet).readers[area]; }

private:
    struct Sheet {
        Number begin = 0, end = 0;                   // of its formulas
        RangeSet filled;                             // by one formula, of more than one cell
        std::map<Place, std::vector<Place>> sharers; // by the cells that state the formulas
        std::vector<Number> readers;
        RangeSet areas, headers;
    };

    const Sheet& sheet_at(int sheet) const { return sheets_[static_cast<std::size_t>(sheet - 1)]; }
    Number first_from(int sheet, Place place) const;
    void add_sheet(const SheetCells& cells, Sheet& sheet);
    void find_areas();

    calculation::Names names_;
    std::vector<NumberFormat> formats_;
    std::vector<IndexedFormula> formulas_;
    std::vector<Number> volatile_;
    std::vector<Sheet> sheets_;
};

} // namespace tarvik::ooxml

#pragma once

#include "engines/packages/package.h"
#include "engines/spreadsheets/calculation/formula.h"
#include "engines/spreadsheets/number_formats.h"
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

    FormulaIndex(calculation::Names names, NumberFormats formats)
        : names_(std::move(names)), formats_(std::move(formats))
    {
    }
    /// Adds the next sheet; `cells`, which hold what the package does, may be null where there is no formula.
    void add_sheet(const SheetCells* cells);
    /// To be called when all are added, ahead of all else.
    void finish();

    const calculation::Names& names() const noexcept { return names_; }
    const NumberFormats& formats() const noexcept { return formats_; }
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

    /// Whether a formula names an area with the cell in it.
    bool refers(int sheet, Place place) const { return areas(sheet).contains(place); }
    /// The areas of a sheet that formulas name, and the formula that names the area of that index.
    const RangeSet& areas(int sheet) const { return sheet_at(sheet).areas; }
    Number reader(int sheet, std::size_t area) const { return sheet_at(sheet).readers[area]; }

private:
    struct Sheet {
        Number begin = 0, end = 0;                   // of its formulas
        RangeSet filled;                             // by one formula, of more than one cell
        std::map<Place, std::vector<Place>> sharers; // by the cells that state the formulas
        std::vector<Range> named;                    // until finish()
        std::vector<Number> readers;
        RangeSet areas, headers;
    };

    const Sheet& sheet_at(int sheet) const { return sheets_[static_cast<std::size_t>(sheet - 1)]; }
    Number first_from(int sheet, Place place) const;
    void visit_areas(IndexedFormula& formula, Number number);

    calculation::Names names_;
    NumberFormats formats_;
    std::vector<IndexedFormula> formulas_;
    std::vector<Number> volatile_;
    std::vector<Sheet> sheets_;
    std::size_t reading_count_ = 0;
};

} // namespace tarvik::ooxml

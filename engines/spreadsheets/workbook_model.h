#pragma once

#include "engines/packages/package_editor.h"
#include "engines/spreadsheets/engine.h"
#include "engines/spreadsheets/recalculation.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace tarvik::ooxml {

/// Does work on a workbook; what goes wrong becomes a Failure that names the file.
template <typename Work>
decltype(auto) naming_workbook(TextView path, Work&& work)
{
    return naming_file(U"工作簿", path, std::forward<Work>(work));
}

/// The formats that a package can be saved in.
enum class WorkbookFormat { Plain, WithMacros };

/// What was changed in a sheet: the merged ranges that were split, and the cells with their values of now.
struct SheetChanges {
    int position; ///< of the sheet among all of the workbook, chart sheets included; from 1
    std::vector<Range> split;
    std::vector<std::pair<Place, CellValue>> cells;
};

/// A workbook as its package holds it. Only what changed is written anew; what is wrong is thrown as Damage.
class WorkbookModel {
public:
    explicit WorkbookModel(std::shared_ptr<const Package> package, FormulaServices services = {});
    WorkbookModel(const WorkbookModel&) = delete;
    WorkbookModel& operator=(const WorkbookModel&) = delete;

    /// The package as it was opened.
    const Package& original() const noexcept { return package_.original(); }
    /// Worksheets in the order of the workbook, hidden ones too; chart and dialog sheets are none.
    int sheet_count() const noexcept { return static_cast<int>(sheets_.size()); }
    /// `index` counts from 1. Damage when the sheet, or one whose results depend on it, could not be edited.
    SheetPart& sheet(int index);
    /// The results of the formulas.
    Recalculation& recalculation();
    /// Makes the package what a file of this format must be. Macros are lost in the plain one.
    void set_format(WorkbookFormat format);
    /// The package with all changes, valid until the next one. When values changed, what depends on them is calculated,
    /// and the reader is asked to calculate anew.
    const std::string& pack();

    /// Of a worksheet among all sheets of the workbook, from 1.
    int position(int index) const { return sheets_.at(static_cast<std::size_t>(index - 1)).position + 1; }
    /// Whether everything in all sheets lies within the first rows and columns, up to that cell.
    bool fits(Place last);
    /// From now on changes are recorded, those before forgotten, for a file of another format that is to be changed
    /// alike.
    void record_changes() { recorded_.emplace(); }
    std::vector<SheetChanges> changes() const;

    // For the sheets and the results of formulas:

    bool counts_from_1904() const;
    CalendarTime now() const { return services_.now(); }

    /// A cell was overwritten.
    void touch(int sheet, Place place);
    /// A merged range was split.
    void split(int sheet, const Range& range);
    /// Brings the results in the range up to date. Damage that names a cell when that is not possible.
    void update(int sheet, const Range& range);
    /// Of the cells with that number of a format, whether formulas refer to the cell or not.
    bool takes_numbers(int sheet, Place place, std::size_t format);
    bool shows_dates(std::size_t format) { return recalculation().index().format(format) == NumberFormat::Date; }

private:
    struct Recorded {
        std::vector<Range> split;
        std::set<Place> cells;
    };

    SheetPart& load(int number);
    std::shared_ptr<FormulaIndex> make_index();
    [[noreturn]] void refuse(FormulaIndex::Number number, const Text& why) const;
    void ask_suite(FormulaIndex::Number number);
    void ask_for_calculation();
    void drop_calculation_chain();

    PackageEditor package_;
    XmlPart workbook_;
    Relationships relationships_;
    std::optional<SharedStrings> strings_;
    std::optional<CellValues> values_;
    std::vector<ListedSheet> sheets_;
    std::vector<std::unique_ptr<SheetPart>> parts_; // of the sheets
    FormulaServices services_;
    std::optional<Recalculation> recalculation_;
    std::optional<std::map<int, Recorded>> recorded_; // by sheets, where changes are recorded
    std::string packed_;
    bool has_new_values_ = false; // since the results were settled
    bool is_unpacked_ = false;    // the bytes packed last are out of date
};

} // namespace tarvik::ooxml

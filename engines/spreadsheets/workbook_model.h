#pragma once

#include "engines/packages/package_editor.h"
#include "engines/spreadsheets/sheet_part.h"

#include <memory>
#include <optional>
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

/// A workbook as its package holds it. Only what changed is written anew; what is wrong is told as Damage.
class WorkbookModel {
public:
    explicit WorkbookModel(std::shared_ptr<const Package> package);

    /// The package as it was opened.
    const Package& original() const noexcept { return package_.original(); }
    /// Worksheets in the order of the workbook, hidden ones too; chart and dialog sheets are none.
    int sheet_count() const noexcept { return static_cast<int>(sheets_.size()); }
    /// `index` counts from 1. Damage when the sheet, or one whose results depend on it, could not be edited.
    SheetPart& sheet(int index);
    /// To be called when a cell of some sheet was changed.
    void note_new_values() noexcept { has_new_values_ = is_unpacked_ = true; }
    /// Makes the package what a file of this format must be. Macros are lost in the plain one.
    void set_format(WorkbookFormat format);
    /// The package with all changes, valid until the next one. When values changed, the cached results of all formulas
    /// are dropped and the reader is asked to calculate anew.
    const std::string& pack();

private:
    struct Sheet {
        std::string name; // of its part
        std::unique_ptr<SheetPart> part;
    };

    void list_sheets();
    void load_formulas();
    void load_strings();
    SheetPart& load(Sheet& sheet);
    void drop_results();
    void ask_for_calculation();
    void drop_calculation_chain();

    PackageEditor package_;
    AreaReader areas_;
    std::string workbook_name_;
    Relationships relationships_;
    XmlPart workbook_;
    std::optional<SharedStrings> strings_;
    std::optional<CellValues> values_;
    std::vector<Sheet> sheets_;
    std::string packed_;
    bool has_loaded_formulas_ = false;
    bool has_new_values_ = false; // since the results were dropped
    bool is_unpacked_ = false;    // the bytes packed last are out of date
};

} // namespace tarvik::ooxml

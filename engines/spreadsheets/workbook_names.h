#pragma once

#include "engines/packages/relationships.h"
#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/calculation/formula.h"

#include <map>
#include <utility>

namespace tarvik::ooxml {

/// What formulas call by name: the sheets, defined names and tables of a workbook. It never changes.
class WorkbookNames {
public:
    struct Sheet {
        Text title;
        std::string part;
        int position = 0; ///< among all sheets of the workbook, chart sheets included; from 0
    };

    WorkbookNames(const Package& package, pugi::xml_node workbook, const std::vector<Sheet>& sheets);

    // As calculation::CellSource has them.
    int sheet_count() const noexcept { return static_cast<int>(titles_.size()); }
    const Text& sheet_name(int sheet) const { return titles_.at(static_cast<std::size_t>(sheet - 1)); }
    std::optional<int> find_sheet(TextView name) const;
    calculation::FormulaPointer find_name(TextView name, int sheet) const;
    const calculation::Table* find_table(TextView name) const;
    const calculation::Table* find_table_at(const calculation::CellAddress& cell) const;
    /// Whether the row lies in a table with a filter: when it is hidden, then by that.
    bool is_in_filtered_table(int sheet, int row) const;

private:
    void read_names(pugi::xml_node workbook, const std::vector<Sheet>& sheets);
    void read_tables(const Package& package, int sheet, const std::string& part);

    std::vector<Text> titles_;
    std::map<Text, int> sheets_;
    std::map<std::pair<Text, int>, calculation::FormulaPointer> names_; // with their sheet, 0 for the workbook's
    std::map<Text, calculation::Table> tables_;
    std::vector<std::pair<int, Range>> filtered_; // by tables, with their sheets
};

} // namespace tarvik::ooxml

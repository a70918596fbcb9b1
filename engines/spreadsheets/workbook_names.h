#pragma once

#include "engines/packages/relationships.h"
#include "engines/packages/xml_part.h"
#include "engines/spreadsheets/calculation/formula.h"

#include <map>
#include <utility>

namespace tarvik::ooxml {

/// What formulas call by name: the sheets, defined names and tables of a workbook. It never changes.
class WorkbookNames final : public calculation::Names {
public:
    struct Sheet {
        Text title;
        std::string part;
        int position = 0; ///< among all sheets of the workbook, chart sheets included; from 0
    };

    WorkbookNames(const Package& package, pugi::xml_node workbook, const std::vector<Sheet>& sheets);

    int sheet_count() const noexcept { return sheet_count_; }
    std::optional<int> find_sheet(TextView name) const override;
    calculation::FormulaPointer find_name(TextView name, int sheet) const override;
    const calculation::Table* find_table(TextView name) const override;
    const calculation::Table* find_table_at(const calculation::CellAddress& cell) const override;
    /// Whether the row lies in a table with a filter: when it is hidden, then by that.
    bool is_in_filtered_table(int sheet, int row) const;

private:
    void read_names(pugi::xml_node workbook, const std::vector<Sheet>& sheets);
    void read_tables(const Package& package, int sheet, const std::string& part);

    int sheet_count_;
    std::map<Text, int> sheets_;
    std::map<std::pair<Text, int>, calculation::FormulaPointer> names_; // with their sheet, 0 for the workbook's
    std::map<Text, calculation::Table> tables_;
    std::vector<std::pair<int, Range>> filtered_; // by tables, with their sheets
};

} // namespace tarvik::ooxml

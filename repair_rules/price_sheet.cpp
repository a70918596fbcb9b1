#include "repair_rules/sheets.h"

namespace tarvik::repair_rules {

namespace {

constexpr std::size_t first_field = 6; ///< goes to column 5; the ones behind it follow
constexpr int last_moving_column = 25;

/// Where every row of the sheet goes and what is written in it, found out before the first cell changes.
class PriceSheet {
public:
    PriceSheet(Worksheet& sheet, const Records& records)
        : sheet_(sheet), records_(records), last_line_(last_line(sheet)), last_column_(last_filled_column())
    {
    }

    bool enter()
    {
        place_rows();
        for (const auto& writes : {moved_cells(), entries_})
            for (const Write& write : writes) sheet_.set_cell(write.row, write.column, write.value);
        return found_;
    }

private:
    static constexpr int inserted = 0;

    struct Write {
        int row, column;
        CellValue value;
    };

    int last_filled_column() const
    {
        int column = last_moving_column;
        while (column > 1 && sheet_.is_empty(first_line, column)) --column;
        return column;
    }

    int next_row() const { return first_line + static_cast<int>(origins_.size()); }

    bool moves_anything(int row) const
    {
        for (int column = 1; column <= last_column_; ++column)
            if (!sheet_.is_empty(row, column)) return true;
        return false;
    }

    /// The rows up to twice the last line make room for each other. Rows that are pushed beyond take the place of empty
    /// ones there.
    void place_rows()
    {
        const int room = 2 * last_line_;
        for (int origin = first_line; origin <= room || next_row() > origin; ++origin) {
            if (next_row() > room && !moves_anything(origin)) continue;
            const int row = next_row();
            origins_.push_back(origin);
            if (origin <= last_line_) enter_records(row, origin);
        }
    }

    /// Columns that do not move are looked at where the line stands now.
    bool is_taken(int row, int origin) const
    {
        const auto filled = [&](int column) { return !sheet_.is_empty(column <= last_column_ ? origin : row, column); };
        return filled(faults_column) || filled(repairs_column);
    }

    void enter_records(int row, int origin)
    {
        bool taken = is_taken(row, origin);
        std::vector<std::size_t> further;
        for (const std::size_t record : records_of_line(sheet_, origin, records_)) {
            found_ = true;
            if (records_.field(record, first_field).empty() || records_.field(record, first_field + 1).empty())
                continue;
            if (taken) further.push_back(record);
            else
                for (int column = faults_column; column <= total_column; ++column) add_entry(row, column, record);
            taken = true;
        }
        insert_lines(further);
    }

    void add_entry(int row, int column, std::size_t record)
    {
        const auto field = static_cast<std::size_t>(column - faults_column) + first_field;
        entries_.push_back({row, column, records_.field(record, field).str()});
    }

    /// Each one is put right below the line, so the last stands first. In a column that does not move the ones before
    /// it are written over.
    void insert_lines(const std::vector<std::size_t>& records)
    {
        for (auto record = records.rbegin(); record != records.rend(); ++record) {
            for (const int column : {faults_column, repairs_column})
                if (column <= last_column_ || record == records.rbegin()) add_entry(next_row(), column, *record);
            origins_.push_back(inserted);
        }
    }

    std::vector<Write> moved_cells() const
    {
        std::vector<Write> moved;
        for (int row = first_line; row < next_row(); ++row) {
            const int origin = origins_[static_cast<std::size_t>(row - first_line)];
            if (origin == row) continue;
            for (int column = 1; column <= last_column_; ++column) {
                if (origin != inserted && !sheet_.is_empty(origin, column))
                    moved.push_back({row, column, sheet_.value(origin, column)});
                else if (!sheet_.is_empty(row, column)) moved.push_back({row, column, Text()});
            }
        }
        return moved;
    }

    Worksheet& sheet_;
    const Records& records_;
    int last_line_, last_column_;
    std::vector<int> origins_; ///< for each row from the first line on: the row that goes there
    std::vector<Write> entries_;
    bool found_ = false;
};

} // namespace

bool enter_prices(Worksheet& sheet, const Records& records)
{
    return PriceSheet(sheet, records).enter();
}

} // namespace tarvik::repair_rules

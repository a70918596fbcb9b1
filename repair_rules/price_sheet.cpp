#include "repair_rules/sheet_line.h"
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
        move_rows();
        for (const Entry& entry : entries_)
            sheet_.set_cell(entry.row, entry.column, records_.field(entry.record, entry.field()).str());
        return found_;
    }

private:
    static constexpr int inserted = 0;

    struct Entry {
        int row, column;
        std::size_t record;
        std::size_t field() const { return static_cast<std::size_t>(column - faults_column) + first_field; }
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
        for (const std::size_t record : records_.with_number(sheet_.cell(origin, number_column))) {
            found_ = true;
            if (records_.field(record, first_field).empty() || records_.field(record, first_field + 1).empty())
                continue;
            if (taken) further.push_back(record);
            else
                for (int column = faults_column; column <= total_column; ++column)
                    entries_.push_back({row, column, record});
            taken = true;
        }
        insert_lines(further);
    }

    /// Each one is put right below the line, so the last stands first. In a column that does not move the ones before
    /// it are written over.
    void insert_lines(const std::vector<std::size_t>& records)
    {
        for (auto record = records.rbegin(); record != records.rend(); ++record) {
            for (const int column : {faults_column, repairs_column})
                if (column <= last_column_ || record == records.rbegin())
                    entries_.push_back({next_row(), column, *record});
            origins_.push_back(inserted);
        }
    }

    /// From the bottom up, so that a row is read before another one takes its place.
    void move_rows()
    {
        for (int row = next_row() - 1; row >= first_line; --row) {
            const int origin = origins_[static_cast<std::size_t>(row - first_line)];
            if (origin == row) continue;
            for (int column = 1; column <= last_column_; ++column) move_cell(row, column, origin);
        }
    }

    void move_cell(int row, int column, int origin)
    {
        if (origin != inserted && !sheet_.is_empty(origin, column))
            sheet_.set_cell(row, column, sheet_.value(origin, column));
        else if (!sheet_.is_empty(row, column)) sheet_.set_cell(row, column, Text());
    }

    Worksheet& sheet_;
    const Records& records_;
    int last_line_, last_column_;
    std::vector<int> origins_; ///< for each row from the first line on: the row that goes there
    std::vector<Entry> entries_;
    bool found_ = false;
};

} // namespace

bool enter_prices(Worksheet& sheet, const Records& records)
{
    return PriceSheet(sheet, records).enter();
}

} // namespace tarvik::repair_rules

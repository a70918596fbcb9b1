#include "repair_rules/records.h"

namespace tarvik::repair_rules {

Records::Records(const Table& table, std::size_t count, std::size_t number_column) : table_(table)
{
    for (std::size_t row = 0; row < count; ++row) {
        const auto value = number(table.cell(row, number_column));
        if (value && *value != 0) rows_[*value].push_back(row);
    }
}

std::span<const std::size_t> Records::with_number(TextView text) const
{
    const auto value = number(text);
    if (!value) return {};
    const auto found = rows_.find(*value);
    return found == rows_.end() ? std::span<const std::size_t>() : found->second;
}

} // namespace tarvik::repair_rules

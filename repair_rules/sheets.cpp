#include "repair_rules/sheets.h"

#include <algorithm>
#include <cmath>

namespace tarvik::repair_rules {

namespace {

/// Spreadsheets keep so many digits of a number; what stood behind them is gone.
constexpr double first_inexact = 1e15;

/// The value of a text that is a number, to the last digit: its digits from the first to the last that is not 0, and
/// the power of ten that the last one stands for. Nothing for 0 and for a text that is no number.
std::optional<Text> exact_value(TextView text)
{
    if (!is_number(text)) return std::nullopt;
    const Text lowered = lower(trim(text));
    const std::size_t end = std::min(lowered.find(U'e'), lowered.size());
    Text digits;
    double exponent = leading_number(mid(lowered, end + 2));
    bool behind_point = false;
    for (const char32_t character : lowered.substr(0, end)) {
        if (character == U'.') behind_point = true;
        if (character < U'0' || character > U'9') continue;
        if (behind_point) exponent -= 1;
        if (character != U'0' || !digits.empty()) digits += character;
    }
    if (digits.empty()) return std::nullopt;
    for (; digits.back() == U'0'; digits.pop_back()) exponent += 1;
    return (lowered[0] == U'-' ? U"-" : U"") + digits + U"e" + number_text(exponent);
}

} // namespace

Records::Records(const Table& table, std::size_t count, std::size_t number_column) : table_(table)
{
    for (std::size_t row = 0; row < count; ++row)
        if (const auto value = exact_value(table.cell(row, number_column))) rows_[*value].push_back(row);
}

std::span<const std::size_t> Records::with_number(const CellValue& cell) const
{
    const double* held = std::get_if<double>(&cell);
    if (held && std::fabs(*held) >= first_inexact) return {};
    const auto value = exact_value(held ? number_text(*held) : std::get<Text>(cell));
    const auto found = value ? rows_.find(*value) : rows_.end();
    return found == rows_.end() ? std::span<const std::size_t>() : found->second;
}

int last_line(const Worksheet& sheet)
{
    int row = last_row_looked_at;
    while (row > 1 && sheet.is_empty(row, number_column)) --row;
    return row;
}

std::span<const std::size_t> records_of_line(const Worksheet& sheet, int row, const Records& records)
{
    const auto found = records.with_number(sheet.value(row, number_column));
    return found.empty() || !sheet.is_date(row, number_column) ? found : std::span<const std::size_t>();
}

} // namespace tarvik::repair_rules

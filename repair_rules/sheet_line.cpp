#include "repair_rules/sheet_line.h"

namespace tarvik::repair_rules {

SheetLine::SheetLine(const Worksheet& sheet, int row) : model_(sheet.cell(row, model_column))
{
    for (int column = first_column; column <= last_column; ++column)
        if (!sheet.is_empty(row, column)) cell(column) = {sheet.cell(row, column), true, false};
}

void SheetLine::write(Worksheet& sheet, int row) const
{
    for (int column = first_column; column <= last_column; ++column)
        if (cell(column).changed) sheet.set_cell(row, column, cell(column).value);
}

Text SheetLine::text(int column) const
{
    if (column == model_column) return model_;
    const CellValue& value = cell(column).value;
    const double* number = std::get_if<double>(&value);
    return number ? number_text(*number) : std::get<Text>(value);
}

std::optional<double> SheetLine::number(int column) const
{
    const CellValue& value = cell(column).value;
    if (const double* number = std::get_if<double>(&value)) return *number;
    const Text& text = std::get<Text>(value);
    return text.empty() ? 0 : tarvik::number(text);
}

void SheetLine::set(int column, CellValue value)
{
    const Text* text = std::get_if<Text>(&value);
    const bool filled = !text || !text->empty();
    cell(column) = {std::move(value), filled, true};
}

void SheetLine::append(int column, TextView text)
{
    LineCell& target = cell(column);
    if (!std::holds_alternative<Text>(target.value)) target.value = this->text(column);
    text.append_to(std::get<Text>(target.value));
    target.filled = target.changed = true;
}

} // namespace tarvik::repair_rules

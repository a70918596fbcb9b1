#include "engines/spreadsheets/cell_values.h"

#include "engines/spreadsheets/calculation/coercion.h"
#include "engines/spreadsheets/calculation/formula.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace tarvik::ooxml {

namespace {

std::string_view without_blanks(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

// Of "2024-05-06T12:00:00", a date alone or a time alone, to the nearest second; nothing for another form.
std::optional<double> serial_number(std::string_view written, bool counts_from_1904)
try {
    auto text = from_utf8(written);
    if (text.ends_with(U'Z')) text.pop_back();
    std::ranges::replace(text, U'T', U' ');
    const auto number = calculation::parse_number(text, counts_from_1904);
    return number ? std::optional(std::round(*number * calculation::seconds_of_day) / calculation::seconds_of_day)
                  : std::nullopt;
} catch (const calculation::CannotCalculate&) {
    return std::nullopt;
}

// Of a text in the table.
std::optional<std::size_t> text_index(pugi::xml_node cell)
{
    const auto value = child_named(cell, "v");
    // Every cell of a sheet is asked, and nearly all write the digits alone.
    if (const auto index = parsed<std::size_t>(value.first_child().value());
        index && !value.first_child().next_sibling())
        return index;
    return parsed<std::size_t>(without_blanks(element_text(value)));
}

bool is_blank(pugi::xml_node value)
{
    return without_blanks(element_text(value)).empty();
}

bool is_shared_text(pugi::xml_node cell) noexcept
{
    return std::string_view(cell.attribute("t").value()) == "s";
}

std::string written_number(double number)
{
    constexpr std::size_t longest_number = 32;
    std::array<char, longest_number> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number == 0 ? 0.0 : number).ptr; // no "-0"
    return {digits.begin(), end};
}

void set_value(pugi::xml_node cell, const std::string& raw)
{
    auto value = child_named(cell, "v");
    if (value) return set_raw_text(value, raw);
    append_raw_element(cell, "v", raw);
}

} // namespace

void CellValues::check(pugi::xml_node cell) const
{
    if (!is_shared_text(cell)) return;
    const auto index = text_index(cell);
    if (index && strings_ && strings_->has(*index)) return;
    if (!is_blank(child_named(cell, "v"))) {
        throw Damage(U"单元格 " + from_utf8(attribute_text(cell, "r")) + U" 引用的文本不存在。");
    }
}

calculation::Value CellValues::value(pugi::xml_node cell) const
{
    const auto type = attribute_text(cell, "t");
    const auto element = child_named(cell, "v");
    const auto held = element_text(element);
    const auto written = without_blanks(held);
    if (type == "inlineStr") {
        const auto inline_text = child_named(cell, "is");
        return inline_text || !written.empty() ? rich_text(inline_text) : calculation::Value();
    }
    if (type == "str") return element ? decode_cell_text(held) : calculation::Value();
    if (written.empty()) return {};
    if (type == "s") {
        const auto index = text_index(cell);
        return index && strings_ ? strings_->text(*index) : Text();
    }
    if (type == "b") return written == "1" || written == "true";
    if (type == "e") return calculation::parse_error(from_utf8(written)).value_or(calculation::CellError::Value);
    const auto number = type == "d" ? serial_number(written, counts_from_1904_) : parsed<double>(written);
    return number ? calculation::Value(*number) : from_utf8(written);
}

Text CellValues::text(pugi::xml_node cell) const
{
    const auto held = value(cell);
    if (const auto* const number = std::get_if<double>(&held)) return number_text(*number);
    if (const auto* const truth = std::get_if<bool>(&held)) return *truth ? U"True" : U"False";
    if (const auto* const text = std::get_if<Text>(&held)) return *text;
    // An error as it is written: the formulas' language does not have all of them.
    return from_utf8(without_blanks(element_text(child_named(cell, "v"))));
}

bool CellValues::is_empty(pugi::xml_node cell) const
{
    if (!cell.first_child()) return true;
    if (!is_shared_text(cell)) return text(cell).empty();
    // Many cells may share a long text: it is not read for each of them.
    const auto index = text_index(cell);
    return !index || !strings_ || strings_->is_empty(*index);
}

bool CellValues::has_result(pugi::xml_node cell)
{
    if (child_named(cell, "is")) return true;
    const auto value = child_named(cell, "v");
    return value && (std::string_view(cell.attribute("t").value()) == "str" || !is_blank(value));
}

void CellValues::erase(pugi::xml_node cell)
{
    if (is_shared_text(cell) && strings_) strings_->count_references(-1);
    if (cell.first_child()) {
        for (const char* name : {"f", "v", "is"}) {
            if (const auto child = child_named(cell, name)) remove_element(cell, child);
        }
    }
    // Type, and what belongs to the lost value: its record in the metadata, its phonetic reading.
    for (const char* name : {"t", "cm", "vm", "ph"})
        while (cell.remove_attribute(name)) {
        }
}

void CellValues::write_text(pugi::xml_node cell, TextView text)
{
    erase(cell);
    const auto raw = encode_cell_text(text);
    if (strings_) {
        cell.append_attribute("t").set_value("s");
        set_value(cell, std::to_string(strings_->add(raw)));
        strings_->count_references(1);
        return;
    }
    cell.append_attribute("t").set_value("inlineStr");
    auto holder = cell.prepend_child(name_like(cell, "is").c_str());
    append_raw_element(holder, "t", raw);
    if (needs_preserving(raw)) set_attribute(holder.first_child(), "xml:space", "preserve");
}

void CellValues::write_number(pugi::xml_node cell, double number)
{
    erase(cell);
    if (std::isfinite(number)) return set_value(cell, written_number(number));
    set_attribute(cell, "t", "e");
    set_value(cell, "#NUM!");
}

void CellValues::write_result(pugi::xml_node cell, const calculation::Value& result)
{
    auto write = [cell](const char* type, const std::string& raw) mutable {
        if (type) set_attribute(cell, "t", type);
        else cell.remove_attribute("t");
        set_value(cell, raw);
    };
    if (const auto inline_text = child_named(cell, "is")) remove_element(cell, inline_text);
    if (const auto* number = std::get_if<double>(&result)) write(nullptr, written_number(*number));
    else if (const auto* truth = std::get_if<bool>(&result)) write("b", *truth ? "1" : "0");
    else if (const auto* text = std::get_if<Text>(&result)) write("str", encode_cell_text(*text));
    else if (const auto* error = std::get_if<calculation::CellError>(&result)) {
        write("e", to_utf8(calculation::error_text(*error)));
    } else {
        drop_result(cell);
    }
}

bool CellValues::drop_result(pugi::xml_node cell)
{
    bool had_one = cell.remove_attribute("t");
    for (const char* name : {"v", "is"}) {
        if (const auto child = child_named(cell, name)) {
            remove_element(cell, child);
            had_one = true;
        }
    }
    return had_one;
}

} // namespace tarvik::ooxml

#include "office/spreadsheets/cell_values.h"

#include "office/spreadsheets/cell_text.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <optional>

namespace tarvik::ooxml {

namespace {

std::string_view without_blanks(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r\n";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

template <typename Number>
std::optional<Number> parsed(std::string_view text)
{
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

Text number_or_as_written(std::string_view written)
{
    const auto number = parsed<double>(written);
    return number ? number_text(*number) : from_utf8(written);
}

/// "2024-05-06T12:00:00" as days and their part; nothing for another form.
std::optional<double> serial_number(std::string_view date, bool counts_from_1904)
{
    const auto part = [date](std::size_t at, std::size_t count) {
        return at + count <= date.size() ? parsed<int>(date.substr(at, count)) : std::nullopt;
    };
    const auto year = part(0, 4);
    const auto month = part(5, 2);
    const auto day = part(8, 2);
    if (!year || !month || !day) return std::nullopt;
    using namespace std::chrono;
    const year_month_day told(std::chrono::year(*year), std::chrono::month(static_cast<unsigned>(*month)),
                              std::chrono::day(static_cast<unsigned>(*day)));
    const auto zero = counts_from_1904 ? sys_days(1904y / January / 1) : sys_days(1899y / December / 30);
    const auto whole_days = static_cast<double>((sys_days(told) - zero).count());
    constexpr double hours_of_day = 24, minutes_of_hour = 60, seconds_of_minute = 60;
    const double minutes = part(11, 2).value_or(0) * minutes_of_hour + part(14, 2).value_or(0);
    const double seconds = minutes * seconds_of_minute + part(17, 2).value_or(0);
    return whole_days + seconds / (hours_of_day * minutes_of_hour * seconds_of_minute);
}

bool is_shared_text(pugi::xml_node cell) noexcept
{
    return std::string_view(cell.attribute("t").value()) == "s";
}

void add_raw_text(pugi::xml_node parent, const char* name, const std::string& raw)
{
    set_raw_text(parent.append_child(name_like(parent, name).c_str()), raw);
}

void set_value(pugi::xml_node cell, const std::string& raw)
{
    auto value = child_named(cell, "v");
    if (value) return set_raw_text(value, raw);
    add_raw_text(cell, "v", raw);
}

} // namespace

Text CellValues::text(pugi::xml_node cell) const
{
    const auto type = attribute_text(cell, "t");
    if (type == "inlineStr") return rich_text(child_named(cell, "is"));
    const auto held = element_text(child_named(cell, "v"));
    if (type == "str") return decode_cell_text(held);
    const auto written = without_blanks(held);
    if (type == "s") {
        const auto index = parsed<std::size_t>(written);
        return index && strings_ ? strings_->text(*index) : Text();
    }
    if (type == "b") return written == "1" || written == "true" ? U"True" : U"False";
    if (type == "e") return from_utf8(written);
    if (type == "d") {
        const auto serial = serial_number(written, counts_from_1904_);
        return serial ? number_text(*serial) : from_utf8(written);
    }
    return number_or_as_written(written);
}

std::optional<double> CellValues::number(pugi::xml_node cell) const
{
    const auto type = attribute_text(cell, "t");
    const auto written = without_blanks(element_text(child_named(cell, "v")));
    if (type == "d") return serial_number(written, counts_from_1904_);
    return type.empty() || type == "n" ? parsed<double>(written) : std::nullopt;
}

bool CellValues::is_empty(pugi::xml_node cell) const
{
    return !cell.first_child() || (!child_named(cell, "f") && text(cell).empty());
}

void CellValues::erase(pugi::xml_node cell)
{
    if (is_shared_text(cell) && strings_) strings_->count_references(-1);
    for (const char* name : {"f", "v", "is"}) {
        if (const auto child = child_named(cell, name)) remove_element(cell, child);
    }
    // Type, and what belongs to the lost value: its record in the metadata, its phonetic reading.
    for (const char* name : {"t", "cm", "vm", "ph"}) cell.remove_attribute(name);
}

void CellValues::write_text(pugi::xml_node cell, TextView text)
{
    erase(cell);
    const auto raw = encode_cell_text(text);
    if (strings_) {
        set_attribute(cell, "t", "s");
        set_value(cell, std::to_string(strings_->add(raw)));
        strings_->count_references(1);
        return;
    }
    set_attribute(cell, "t", "inlineStr");
    auto holder = cell.prepend_child(name_like(cell, "is").c_str());
    add_raw_text(holder, "t", raw);
    if (needs_preserving(raw)) set_attribute(holder.first_child(), "xml:space", "preserve");
}

void CellValues::write_number(pugi::xml_node cell, double number)
{
    erase(cell);
    if (!std::isfinite(number)) {
        set_attribute(cell, "t", "e");
        return set_value(cell, "#NUM!");
    }
    constexpr std::size_t longest_number = 32;
    std::array<char, longest_number> digits{};
    const auto end = std::to_chars(digits.begin(), digits.end(), number == 0 ? 0.0 : number).ptr; // no "-0"
    set_value(cell, std::string(digits.begin(), end));
}

} // namespace tarvik::ooxml

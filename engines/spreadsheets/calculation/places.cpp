#include "engines/spreadsheets/calculation/places.h"

namespace tarvik::ooxml {

namespace {

constexpr int letters_of_alphabet = 26;

bool is_letter(char c) noexcept
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

std::optional<int> parse_count(std::string_view digits, int limit) noexcept
{
    const auto value = parsed<int>(digits);
    return value && *value >= 1 && *value <= limit ? value : std::nullopt;
}

std::optional<int> parse_column(std::string_view letters) noexcept
{
    if (letters.empty() || letters.size() > 3) return std::nullopt;
    int column = 0;
    for (const char letter : letters) {
        if (!is_letter(letter)) return std::nullopt;
        column = column * letters_of_alphabet + (letter & 0x1f);
    }
    if (column > last_column_of_sheet) return std::nullopt;
    return column;
}

std::optional<Place> parse_place(std::string_view name) noexcept
{
    std::size_t letters = 0;
    while (letters < name.size() && is_letter(name[letters])) ++letters;
    const auto column = parse_column(name.substr(0, letters));
    const auto row = parse_count(name.substr(letters), last_row_of_sheet);
    if (!column || !row) return std::nullopt;
    return Place{*row, *column};
}

std::optional<Range> parse_range(std::string_view name) noexcept
{
    const auto colon = name.find(':');
    const auto one = parse_place(name.substr(0, colon));
    const auto other = colon == std::string_view::npos ? one : parse_place(name.substr(colon + 1));
    if (!one || !other) return std::nullopt;
    Range range{*one, *one};
    range.include(*other);
    return range;
}

std::string column_name(int column)
{
    std::string letters;
    for (; column > 0; column = (column - 1) / letters_of_alphabet) {
        letters.insert(letters.begin(), static_cast<char>('A' + (column - 1) % letters_of_alphabet));
    }
    return letters;
}

std::string place_name(Place place)
{
    return column_name(place.column) + std::to_string(place.row);
}

std::string range_name(const Range& range)
{
    if (range.first == range.last) return place_name(range.first);
    return place_name(range.first) + ":" + place_name(range.last);
}

} // namespace tarvik::ooxml

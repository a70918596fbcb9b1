#include "engines/spreadsheets/calculation/value.h"

#include <array>
#include <utility>

namespace tarvik::calculation {

namespace {

constexpr std::array<std::u32string_view, 7> texts_of_errors{U"#NULL!", U"#DIV/0!", U"#VALUE!", U"#REF!",
                                                             U"#NAME?", U"#NUM!",   U"#N/A"};

} // namespace

TextView error_text(CellError error) noexcept
{
    return texts_of_errors.at(static_cast<std::size_t>(error));
}

std::optional<CellError> parse_error(TextView text) noexcept
{
    for (std::size_t i = 0; i < texts_of_errors.size(); ++i)
        if (text == texts_of_errors[i]) return static_cast<CellError>(i);
    return std::nullopt;
}

} // namespace tarvik::calculation

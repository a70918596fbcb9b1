#pragma once

#include "engines/spreadsheets/calculation/operand.h"

#include <span>
#include <string_view>

namespace tarvik::calculation {

class Call;

/// A row of the table of functions.
struct Function {
    std::string_view name;
    int least, most; ///< arguments
    /// How each argument is taken; those behind "|" over and over, else the last one.
    /// n a number, t a text, l a truth value, v any one value; their errors are the function's result.
    /// e one value, an error too. Of these an array gives an array of results.
    /// r as it comes: areas, an array or a value; a the same, with the operators in it working on whole arrays.
    /// x not calculated before the function asks for it.
    std::string_view kinds;
    Operand (*calculate)(Call& call);
    bool is_volatile = false;
};

/// By its name in capitals, without the prefixes that files put before newer ones; nullptr when there is none.
const Function* find_function(std::string_view name) noexcept;

std::span<const Function> logic_functions() noexcept;
std::span<const Function> mathematics_functions() noexcept; ///< and of finance
std::span<const Function> statistics_functions() noexcept;
std::span<const Function> conditional_functions() noexcept;
std::span<const Function> lookup_functions() noexcept;
std::span<const Function> text_functions() noexcept;
std::span<const Function> date_functions() noexcept;

} // namespace tarvik::calculation

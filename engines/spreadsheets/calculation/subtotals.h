#pragma once

#include "engines/spreadsheets/calculation/evaluator.h"

#include <vector>

namespace tarvik::calculation {

/// What a subtotal leaves out of its areas.
struct Skipped {
    bool hidden = false, filtered = false, subtotals = false, errors = false;
};

void append_subtotal_values(Call& call, std::size_t argument, const Skipped& skipped, std::vector<Value>& values);
/// Kinds 1 to 13: the numbers by which SUBTOTAL and AGGREGATE name the function to take.
Value subtotal_of(int kind, const std::vector<Value>& values);
/// Kinds 14 to 19, which ask for a place in the order of the values.
Value ranked_subtotal_of(int kind, const std::vector<Value>& values, double place);

} // namespace tarvik::calculation

#pragma once

#include "engines/spreadsheets/calculation/source.h"
#include "engines/spreadsheets/calculation/tree.h"

#include <variant>

namespace tarvik::calculation {

/// Areas, or the error that the reference is instead.
using Resolved = std::variant<Areas, CellError>;

/// What the reference points at from that cell.
Resolved resolve(const AreaReference& reference, const CellAddress& at, const CellSource& source);
Resolved resolve(const TableReference& reference, const CellAddress& at, const CellSource& source);

/// The formula of the name, or nullptr.
std::shared_ptr<const Formula> find_formula(const NameReference& name, const CellAddress& at, const CellSource& source);

} // namespace tarvik::calculation

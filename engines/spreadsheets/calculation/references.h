#pragma once

#include "engines/spreadsheets/calculation/source.h"
#include "engines/spreadsheets/calculation/tree.h"

namespace tarvik::calculation {

/// What the reference points at from that cell: areas, or the error that it is instead.
Operand resolve(const AreaReference& reference, const CellAddress& at, const Names& names);
Operand resolve(const TableReference& reference, const CellAddress& at, const Names& names);

/// The formula of the name, or nullptr.
FormulaPointer find_formula(const NameReference& name, const CellAddress& at, const Names& names);

} // namespace tarvik::calculation

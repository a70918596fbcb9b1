#include "engines/spreadsheets/calculation/formula.h"

namespace tarvik::calculation {

struct Tree {};
class Calculator::Memory {};

bool Formula::is_volatile() const noexcept
{
    return true;
}

bool Formula::has_subtotal() const noexcept
{
    return false;
}

FormulaPointer parse(std::string_view, Place)
{
    return std::make_shared<Formula>(std::make_shared<Tree>());
}

void visit_areas(const Formula&, const CellAddress&, const CellSource&, const AreaVisitor&) {}

Calculator::Calculator(const CellSource& source) : source_(source), memory_(std::make_unique<Memory>()) {}
Calculator::~Calculator() = default;

Value Calculator::calculate(const Formula&, const CellAddress&, const Form&)
{
    static_cast<void>(source_);
    throw CannotCalculate("formula");
}

} // namespace tarvik::calculation

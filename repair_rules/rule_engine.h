#pragma once

#include "repair_rules/rules.h"
#include "repair_rules/sheet_line.h"

/// What the rules make of a line and of the records with its repair number. Knows no sheet and no window.
namespace tarvik::repair_rules {

/// What a record says. The texts are those of the open report, in lower case.
struct RepairRecord {
    TextView fault, repair, charge;
};

/// Enters a record whose fault and repair texts are not empty: its texts in columns 5 and 6, part codes in 7, their
/// quantity in 8, charges in 9 to 11. The first record of an empty line decides code and quantity by the last rule that
/// fires; each further record adds to what stands there.
void enter_record(SheetLine& line, const RepairRecord& record, const RuleTable& rules);

/// What every line gets when its records are entered, also a line without: the line rules, then in column 12 the total
/// of the charges, if there are any. A charge that is no number leaves the line without a total.
void finish_line(SheetLine& line, const RuleTable& rules);

} // namespace tarvik::repair_rules

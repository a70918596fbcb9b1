#include "repair_rules/rules.h"

namespace tarvik::repair_rules {

bool Condition::holds(TextView text) const
{
    for (const auto wanted : all_of) {
        if (wanted.empty()) break;
        if (!text.contains(wanted)) return false;
    }
    return none_of.empty() || !text.contains(none_of);
}

} // namespace tarvik::repair_rules

#include "engines/spreadsheets/calculation/functions.h"

#include <unordered_map>

namespace tarvik::calculation {

namespace {

using ByName = std::unordered_map<std::string_view, const Function*>;

ByName all_functions()
{
    ByName functions;
    for (const auto group :
         {logic_functions(), mathematics_functions(), statistics_functions(), conditional_functions(),
          lookup_functions(), text_functions(), date_functions(), finance_functions()})
        for (const auto& function : group) functions.emplace(function.name, &function);
    return functions;
}

} // namespace

const Function* find_function(std::string_view name) noexcept
{
    static const ByName functions = all_functions();
    const auto found = functions.find(name);
    return found == functions.end() ? nullptr : found->second;
}

} // namespace tarvik::calculation

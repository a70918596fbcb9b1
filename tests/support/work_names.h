#pragma once

#include "scripts/names.h"

namespace tarvik::test {

/// The names that a script can ask for, each array with some of its indices, without those of places, sizes and carets:
/// they belong to the window.
inline std::vector<std::string> work_names(const Program& program)
{
    std::vector<std::string> result;
    for (const std::string& name : all_names(program)) {
        bool is_look = false;
        for (const char* look : {".Left", ".Top", ".Width", ".Height", ".SelStart", ".SelLength", ".SelText",
                                 ".Interval", "Timer1(", ".WindowState", ".SelFontSize"})
            is_look = is_look || name.find(look) != std::string::npos;
        if (is_look) continue;
        const std::size_t bracket = name.find("(i");
        if (bracket == std::string::npos) result.push_back(name);
        else
            for (const char* index : {"0", "1", "2", "5"})
                result.push_back(name.substr(0, bracket + 1) + index + (name.ends_with("(i)") ? ")" : ",1)"));
    }
    return result;
}

} // namespace tarvik::test

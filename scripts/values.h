#pragma once

#include "platform/text/document.h"

#include <concepts>
#include <string>
#include <variant>

namespace tarvik {

/// An object member: only whether it is there.
struct ObjectValue {
    bool present = false;
    friend bool operator==(const ObjectValue&, const ObjectValue&) = default;
};
/// A list that is written as JSON already.
struct ListValue {
    std::string json;
    friend bool operator==(const ListValue&, const ListValue&) = default;
};
/// What an expression of a script can have as its value.
using Value = std::variant<Text, double, bool, ObjectValue, ListValue>;

/// A JSON string; characters outside ASCII stand as they are.
std::string json_string(TextView text);
/// The value as the transcript shows it: a text as JSON string, a number as plain decimal, True, False, Nothing,
/// Object.
std::string printed(const Value& value);
/// Whether a script that expects `expected` means this value: texts as texts, others as printed.
bool matches(const Value& value, TextView expected);

// What a member of the model shows as.
inline Value to_value(const Text& text)
{
    return text;
}
inline Value to_value(const SharedText& text)
{
    return text.str();
}
inline Value to_value(bool flag)
{
    return flag;
}
template <typename Number>
requires(std::integral<Number> || std::floating_point<Number>) Value to_value(Number number)
{
    return static_cast<double>(number);
}
template <typename Kind>
Value to_value(Kind* object)
{
    return ObjectValue{object != nullptr};
}

} // namespace tarvik

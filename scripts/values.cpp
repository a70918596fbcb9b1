#include "scripts/values.h"

#include <array>
#include <cstdio>

namespace tarvik {

namespace {

constexpr std::pair<char, char> short_escapes[] = {{'"', '"'},  {'\\', '\\'}, {'\r', 'r'}, {'\n', 'n'},
                                                   {'\t', 't'}, {'\b', 'b'},  {'\f', 'f'}};

void append_escaped(std::string& json, char character)
{
    for (const auto& [meant, letter] : short_escapes)
        if (meant == character) {
            json += '\\';
            json += letter;
            return;
        }
    if (static_cast<unsigned char>(character) >= 0x20) {
        json += character;
        return;
    }
    std::array<char, 8> escape{};
    std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(character));
    json += escape.data();
}

struct PrintedForm {
    std::string operator()(const Text& text) const { return json_string(text); }
    std::string operator()(double number) const { return to_utf8(number_text(number)); }
    std::string operator()(bool flag) const { return flag ? "True" : "False"; }
    std::string operator()(const ObjectValue& object) const { return object.present ? "Object" : "Nothing"; }
    std::string operator()(const ListValue& list) const { return list.json; }
};

} // namespace

std::string json_string(TextView text)
{
    std::string json = "\"";
    for (const char byte : to_utf8(text)) append_escaped(json, byte);
    return json += '"';
}

std::string printed(const Value& value)
{
    return std::visit(PrintedForm{}, value);
}

bool matches(const Value& value, TextView expected)
{
    if (const auto* text = std::get_if<Text>(&value)) return TextView(*text) == expected;
    return printed(value) == to_utf8(expected);
}

} // namespace tarvik

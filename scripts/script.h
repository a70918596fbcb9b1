#pragma once

#include "platform/text/document.h"

#include <array>
#include <concepts>
#include <map>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

/// What scripts and transcripts are written in: words, values, lines.
namespace tarvik {

/// What ends a script at once. It passes through a running handler, which is why it is no Failure: nobody but the
/// player may take it for a message to the user.
class ScriptFailure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Word {
    Text text;
    bool quoted = false;

    /// Whether the word is this one, written without quotes: "cancel" in quotes is a text like any other.
    bool is(std::u32string_view bare) const { return !quoted && text == bare; }
    std::string utf8() const { return to_utf8(text); }
};

/// What is put in the place of a name in curly brackets.
using Holes = std::map<Text, Text>;
/// What every task has in such places unasked: the day, the month, the month before, the installation folder.
inline constexpr std::array<std::u32string_view, 4> task_holes{U"今天", U"本月", U"上月", U"安装目录"};

/// The words of one line of a script (UTF-8, without its line end). A line that is empty or a comment has none. In
/// quoted words `{NAME}` is filled where `holes` knows the name; other brackets stand for themselves. Throws
/// ScriptFailure for a quote that is not closed, something stuck to a closing quote, or an unknown escape.
std::vector<Word> split_line(std::string_view line, const Holes& holes = {});
/// The word that reads as this text whatever holes there are.
std::string quoted_word(TextView text);

/// A JSON string; characters outside ASCII stand as they are.
std::string json_string(TextView text);

/// What an expression of a script has as its value, as the transcript shows it: a text as JSON string, a number as
/// plain decimal, True, False; of an object only whether it is there, Nothing or Object.
struct ScriptValue {
    std::string shown;
    bool is_text = false;
    friend bool operator==(const ScriptValue&, const ScriptValue&) = default;
};
template <typename Value>
ScriptValue to_value(const Value& value)
{
    if constexpr (std::is_pointer_v<Value>) return {value ? "Object" : "Nothing"};
    else if constexpr (std::same_as<Value, bool>) return {value ? "True" : "False"};
    else if constexpr (std::is_arithmetic_v<Value>) return {to_utf8(number_text(static_cast<double>(value)))};
    else return {json_string(value), true};
}

/// What the user would see, one line each. A line is out at once, so that whoever follows a long run sees it go on.
class Transcript {
public:
    /// With nullptr nobody sees it.
    explicit Transcript(std::ostream* out) : out_(out) {}
    void line(std::string_view line)
    {
        if (out_) *out_ << line << '\n' << std::flush;
    }

private:
    std::ostream* out_;
};

} // namespace tarvik

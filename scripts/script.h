#pragma once

#include "platform/text/text.h"

#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

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

/// The words of one line of a script (UTF-8, without its line end). A line that is empty or a comment has none. In
/// quoted words `{NAME}` is filled where `holes` knows the name; other brackets stand for themselves. Throws
/// ScriptFailure for a quote that is not closed, something stuck to a closing quote, or an unknown escape.
std::vector<Word> split_line(std::string_view line, const Holes& holes = {});
/// The word that reads as this text whatever holes there are.
std::string quoted_word(TextView text);

} // namespace tarvik

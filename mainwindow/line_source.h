#pragma once

#include "platform/text/text.h"

#include <functional>
#include <string>
#include <vector>

namespace tarvik {

/// Lines that are written out only when somebody asks: the view of a large table costs no text until it is saved or
/// searched, and a screen asks for the lines that it shows. Its lines never change.
class LineSource {
public:
    virtual ~LineSource() = default;
    virtual std::size_t line_count() const = 0;
    /// Appends line `index` (from 0) without its line end.
    virtual void append_line(std::size_t index, Text& target) const = 0;
    /// Characters of that line. A source whose lines may be long overrides it where they can be counted without a copy.
    virtual std::size_t line_length(std::size_t index) const;
    /// Appends lines from `first` on in the bytes of the code page, each with its CR LF, until `target` holds `enough`
    /// bytes. Gives the line behind the last one appended. A source that is written to files overrides it where it can
    /// do so without the characters in between.
    virtual std::size_t append_encoded(std::size_t first, std::size_t enough, std::string& target) const;

    // The same lines as one text, each with its CR LF. Offsets count from 0. Where lines begin is found as far as it is
    // asked for, and kept.

    std::size_t size() const { return line_start(line_count()); }
    /// Whether there are more characters than that; counts no farther than it must.
    virtual bool is_longer_than(std::size_t characters) const;
    /// The offset of the line's first character; of the end for the line behind the last.
    std::size_t line_start(std::size_t line) const;
    /// The line that holds the character at `offset`; the line behind the last for the end.
    std::size_t line_at(std::size_t offset) const;
    /// Hands over the `count` characters from `offset`, as many as there are, and gives how many there were. It goes in
    /// parts of about `at_once` characters, or of one line if that is longer, so that nothing but what they are put
    /// into grows with them.
    std::size_t hand_over(std::size_t offset, std::size_t count, std::size_t at_once,
                          const std::function<void(TextView)>& take) const;

private:
    mutable std::vector<std::size_t> starts_;
};

} // namespace tarvik

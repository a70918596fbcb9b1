#pragma once

#include <ostream>
#include <string_view>

namespace tarvik {

/// What the user would see, one line each. A line is out at once, so that whoever follows a long run sees it go on.
class Transcript {
public:
    explicit Transcript(std::ostream& out) : out_(out) {}
    void line(std::string_view line) { out_ << line << '\n' << std::flush; }

private:
    std::ostream& out_;
};

} // namespace tarvik

#pragma once

#include "platform/text/text.h"

#include <memory>
#include <string>
#include <vector>

namespace tarvik::test {

/// One text in every width that holds it.
class Widths {
public:
    explicit Widths(Text text)
        : wide_(std::move(text)), basic_(wide_.begin(), wide_.end()), narrow_(wide_.begin(), wide_.end())
    {
        char32_t bits = 0;
        for (const char32_t c : wide_) bits |= c;
        if (bits <= 0xff) views_.emplace_back(narrow_.data(), narrow_.size());
        if (bits <= 0xffff) views_.emplace_back(basic_.data(), basic_.size());
        views_.emplace_back(wide_);
    }
    Widths(const Widths&) = delete;
    Widths& operator=(const Widths&) = delete;

    const std::vector<TextView>& views() const { return views_; }

private:
    Text wide_;
    std::u16string basic_;
    std::vector<std::uint8_t> narrow_;
    std::vector<TextView> views_;
};

} // namespace tarvik::test

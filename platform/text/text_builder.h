#pragma once

#include "platform/text/document.h"

namespace tarvik {

/// Gathers a long text in the narrowest width that holds it, so that it never stands in four bytes a character.
class TextBuilder {
public:
    void append(TextView piece);
    /// The text so far; the builder is empty afterwards.
    SharedBuffer finish();

private:
    std::vector<std::uint8_t> narrow_;
    std::u16string basic_;
    Text wide_;
    unsigned width_ = 1; ///< bytes a character, which tells the string that holds the text
};

} // namespace tarvik

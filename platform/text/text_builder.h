#pragma once

#include "platform/text/document.h"

#include <cstdlib>

namespace tarvik {

/// Gathers a long text in the narrowest width that holds it. Its memory is not cleared before it is filled, and grows
/// without a copy where the system can move pages.
class TextBuilder {
public:
    void append(TextView piece);
    /// Puts a CR before each LF of a text that holds no CR. Gives whether there was one to put.
    bool end_lines_in_cr_lf();

    /// Room for `count` more characters of this width, which none of the text so far may exceed; added() then makes the
    /// first of them part of the text.
    template <typename Char>
    Char* room(std::size_t count)
    {
        make_room(count, sizeof(Char));
        return static_cast<Char*>(memory_.get()) + size_;
    }
    void added(std::size_t count) noexcept { size_ += count; }

    std::size_t size() const noexcept { return size_; }
    /// Bytes that a character takes so far.
    unsigned width() const noexcept { return width_; }
    TextView view() const noexcept { return {memory_.get(), size_, width_}; }
    /// The text so far, in the narrowest width; the builder is empty afterwards.
    SharedBuffer finish();

private:
    void make_room(std::size_t count, unsigned width);

    CharacterMemory memory_;
    std::size_t size_ = 0, capacity_ = 0; ///< characters, bytes
    unsigned width_ = 1;
};

} // namespace tarvik

#pragma once

#include "platform/text/text.h"
#include "platform/text/text_search.h"

#include <cstdlib>
#include <memory>
#include <utility>

namespace tarvik {

struct FreeMemory {
    void operator()(void* memory) const noexcept { std::free(memory); }
};
/// What std::malloc() gave: unlike a container's it is not cleared first, and it can grow in its place.
using CharacterMemory = std::unique_ptr<void, FreeMemory>;

/// The characters of one document: immutable and shared, in the narrowest width that holds all of them. Pages, hits,
/// row texts and cells are views into it, kept alive by whoever also holds the buffer.
struct TextBuffer {
    CharacterMemory memory;
    std::size_t size;
    unsigned width; ///< bytes a character: 1, 2 or 4

    TextView view() const noexcept { return {memory.get(), size, width}; }
};

using SharedBuffer = std::shared_ptr<const TextBuffer>;

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

/// A buffer with these characters in the narrowest width.
SharedBuffer make_buffer(TextView text);

/// A piece of a buffer together with its share in the buffer's life.
struct SharedText {
    SharedBuffer owner;
    TextView view;

    SharedText() = default;
    SharedText(SharedBuffer buffer, TextView piece) : owner(std::move(buffer)), view(piece) {}
    // NOLINTNEXTLINE(google-explicit-constructor): a text of its own is the usual thing to store.
    SharedText(TextView text);
    bool empty() const noexcept { return view.empty(); }
    Text str() const { return view.str(); }
};

/// A text with its lower-cased twin, which is made once, when it is first asked for; a text without capitals is its
/// own. Copies share both.
class Document {
public:
    Document() = default;
    explicit Document(TextView text);
    /// The first `size` characters of the buffer.
    Document(SharedBuffer buffer, std::size_t size);

    TextView text() const noexcept;
    TextView lowered() const;
    const SharedBuffer& buffer() const noexcept;
    /// The buffer behind lowered(): a view into it lives as long as this is held.
    const SharedBuffer& lowered_buffer() const;
    /// The same document with the CR LF that a decoded file keeps behind its text; the lower-cased twin is shared.
    Document with_closing_line_end() const;
    bool empty() const noexcept { return size_ == 0; }

    /// One of many scans of the lower-cased document begins. When there have been so many that an index pays, it is
    /// made; copies share it.
    void note_keyed_scan() const;
    /// The index of the lower-cased document, or nullptr as long as there is none.
    const SubstringIndex* index() const noexcept;

private:
    struct State;
    std::shared_ptr<State> state_;
    std::size_t size_ = 0;
};

} // namespace tarvik

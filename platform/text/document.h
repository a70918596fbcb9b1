#pragma once

#include "platform/text/substring_index.h"
#include "platform/text/text.h"

#include <memory>
#include <vector>

namespace tarvik {

/// The characters of one document: immutable and shared, in the narrowest width that holds all of them. Pages, hits,
/// row texts and cells are views into it, kept alive by whoever also holds the buffer.
class TextBuffer {
public:
    explicit TextBuffer(std::vector<std::uint8_t> latin1) : narrow_(std::move(latin1)), width_(1) {}
    explicit TextBuffer(std::u16string basic_plane) : basic_(std::move(basic_plane)), width_(2) {}
    explicit TextBuffer(Text text) : wide_(std::move(text)), width_(4) {}
    TextBuffer(const TextBuffer&) = delete;
    TextBuffer& operator=(const TextBuffer&) = delete;

    TextView view() const noexcept;

private:
    std::vector<std::uint8_t> narrow_;
    std::u16string basic_;
    Text wide_;
    unsigned width_;
};

using SharedBuffer = std::shared_ptr<const TextBuffer>;

/// Bytes a character that hold all of these: 1, 2 or 4.
unsigned needed_width(TextView text) noexcept;
/// A buffer with these characters in the narrowest width.
SharedBuffer make_buffer(TextView text);
/// The same with every letter in lower case, character for character.
SharedBuffer make_lowered(TextView text);

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

/// A text with its lower-cased twin, which is made once, when it is first asked for. Copies share both.
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

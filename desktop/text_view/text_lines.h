#pragma once

#include "mainwindow/pane_text.h"
#include "platform/text/document.h"

#include <map>
#include <memory>
#include <vector>

namespace tarvik {

/// A pane's text as lines, found without writing the text out. Lines and offsets count from 0. A line ends at CR LF, CR
/// or LF; behind the last line end stands one more line, which may be empty.
class TextLines {
public:
    TextLines() = default;
    /// What `before` has found out about buffers that still lie in the text is kept.
    TextLines(PaneText text, const TextLines& before);

    std::size_t size() const { return size_; }
    std::size_t line_count() const { return line_count_; }
    /// Of the end for a line behind the last.
    std::size_t line_start(std::size_t line) const;
    /// The offset before the line's end characters.
    std::size_t line_end(std::size_t line) const;
    /// The line that holds the character at `offset`, its end characters included; the last for the end of the text.
    std::size_t line_at(std::size_t offset) const;
    /// Appends the `count` characters from `offset`, as many as there are.
    void append_to(std::size_t offset, std::size_t count, Text& target) const;
    char32_t at(std::size_t offset) const;

private:
    using Lines = std::shared_ptr<const LineSource>;
    using Ends = std::shared_ptr<const std::vector<std::size_t>>; // the offsets behind a buffer's line ends
    struct Piece {
        TextView view{}; // of a buffer; unused for lines
        Ends ends{};
        std::size_t begin = 0; // of the view in its buffer
        Lines lines{};
        std::size_t offset = 0, size = 0;  // in the whole text
        std::size_t first = 0, breaks = 0; // line ends before it and in it
    };

    void add(const SharedText& text, const TextLines& before);
    const Piece& piece_at(std::size_t offset) const;

    PaneText text_; // keeps the buffers alive
    std::map<const TextBuffer*, Ends> ends_;
    std::vector<Piece> pieces_;
    std::size_t size_ = 0;
    std::size_t line_count_ = 1;
};

} // namespace tarvik

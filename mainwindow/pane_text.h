#pragma once

#include "platform/text/document.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>
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
    /// The offset of the line's first character; of the end for the line behind the last.
    std::size_t line_start(std::size_t line) const;
    /// The line that holds the character at `offset`; the line behind the last for the end.
    std::size_t line_at(std::size_t offset) const;
    /// Hands over the `count` characters from `offset`, as many as there are, and gives how many there were. It goes in
    /// parts of about a million characters, or of one line if that is longer, so that nothing but what they are put
    /// into grows with them.
    std::size_t hand_over(std::size_t offset, std::size_t count, const std::function<void(TextView)>& take) const;

private:
    mutable std::vector<std::size_t> starts_;
};

/// The text of a pane: pieces of shared buffers and line sources one behind the other. Each line of a source ends in
/// CR LF. Copies are cheap and share everything.
class PaneText {
public:
    using Piece = std::variant<SharedText, std::shared_ptr<const LineSource>>;

    PaneText() = default;
    explicit PaneText(TextView text);
    explicit PaneText(Document document);
    explicit PaneText(std::shared_ptr<const LineSource> lines);

    bool empty() const { return pieces_.empty(); }
    /// The whole text in one buffer, with its lower-cased twin; made when first asked for and kept until a change.
    const Document& document() const;
    TextView view() const { return document().text(); }
    /// Number of characters, counted without writing lines out.
    std::size_t size() const;
    /// The `length` characters from `start`, as many as there are. A piece of one buffer is not copied.
    SharedText slice(Position start, std::size_t length) const;

    /// Hands over the `length` characters from `start`, as many as there are, in parts of about a million characters,
    /// or of one line if that is longer, without gathering them.
    void for_each_part(const std::function<void(TextView)>& work, Position start = Position(),
                       std::size_t length = npos) const;

    const std::vector<Piece>& pieces() const { return pieces_; }

    void append(TextView text);
    /// Start and length are kept inside the text.
    void replace(Position start, std::size_t length, TextView text);

private:
    template <typename Work>
    void walk(std::size_t offset, std::size_t length, Work&& work) const;
    std::vector<SharedText> parts(std::size_t offset, std::size_t length) const;

    std::vector<Piece> pieces_;
    mutable std::optional<Document> whole_;
};

} // namespace tarvik

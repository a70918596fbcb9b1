#pragma once

#include "mainwindow/line_source.h"
#include "platform/text/document.h"
#include "platform/text/position.h"

#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace tarvik {

/// The text of a pane: pieces of shared buffers and line sources one behind the other. Each line of a source ends in
/// CR LF. Copies are cheap and share everything.
class PaneText {
public:
    using Piece = std::variant<SharedText, std::shared_ptr<const LineSource>>;

    PaneText() = default;
    explicit PaneText(TextView text);
    explicit PaneText(Document document);
    explicit PaneText(std::shared_ptr<const LineSource> lines);

    bool empty() const;
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
